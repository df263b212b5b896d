#pragma once

#include "ui/dialogs/framelessdialog.h"
#include "ui/submit.h"

class QHBoxLayout;

/// A dialog with OK and CANCEL. The answer is that of exec(); Escape stands for CANCEL. Enter in an editor goes on to
/// the next one: only on OK it is OK.
class AnswerDialog : public FramelessDialog
{
    Q_OBJECT

public:
    /// Asked on OK: while it tells of an obstacle, the user reads that and the dialog stays open.
    void setObstacle(Obstacle test) { obstacle = std::move(test); }

public slots:
    void on_pushButton_ok_clicked();
    void on_pushButton_cancel_clicked();

protected:
    using FramelessDialog::FramelessDialog;

    void keyPressEvent(QKeyEvent *event) override;

    /// `pushButton_ok` and `pushButton_cancel`
    QHBoxLayout *makeAnswers();
    /// Whether OK would do anything; not before `makeAnswers`.
    void enableOk(bool enabled);

private:
    Obstacle obstacle = [] { return QString(); };
    QPushButton *ok = nullptr;
};
