#pragma once

#include "ui/dialogs/framelessdialog.h"

/// Tells what the editor is for and who made it. Its links open in the desktop's browser and mail program.
class AboutWindow : public FramelessDialog
{
    Q_OBJECT

public:
    explicit AboutWindow(QWidget *parent = nullptr);

public slots:
    void on_label_about_linkActivated(const QString &link);
    void on_label_footer_linkActivated(const QString &link);
    void on_pushButton_logo_clicked();

private:
    QLabel *makeRichLabel(const QString &objectName, const QString &text, Qt::Alignment alignment);
};
