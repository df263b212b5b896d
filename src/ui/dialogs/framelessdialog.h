#pragma once

#include "ui/windowdrag.h"

#include <QDialog>

#include <initializer_list>
#include <optional>

class QFont;
class QHBoxLayout;
class QLabel;
class QPushButton;
class QVBoxLayout;

/// A dialog without a system frame, moved by its top 60 pixels. Escape closes it as if it were dismissed.
class FramelessDialog : public QDialog
{
    Q_OBJECT

public slots:
    void on_pushButton_closeWindow_clicked();

protected:
    /// A dialog with a parent opens in the middle of it.
    FramelessDialog(const QString &objectName, QWidget *parent);

    void showEvent(QShowEvent *event) override;
    void moveEvent(QMoveEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

    /// Shows an error in a box over the dialog, which goes on meanwhile.
    void tell(const QString &title, const QString &text);
    /// A plain text.
    QLabel *makeLabel(const QString &objectName, const QString &text, const QFont &font);
    /// White on black, and `hoverColor` under the mouse.
    QPushButton *makeButton(const QString &objectName, const QString &text, const QString &hoverColor);
    /// What the dialog shows, from top to bottom.
    QVBoxLayout *makeRows();
    /// Buttons in the lower right corner, from left to right.
    static QHBoxLayout *makeAnswerRow(std::initializer_list<QPushButton *> buttons);
    /// `pushButton_closeWindow`, the cross in the corner; for a dialog that has its final size.
    void makeCloseButton();

private:
    WindowDrag drag;
    std::optional<QPoint> asked;  ///< where the dialog has just been shown
};
