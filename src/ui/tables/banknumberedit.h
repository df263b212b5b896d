#pragma once

#include <QLineEdit>

/// A bank number, 0 to 99. A click or Tab selects it whole, so that what is typed replaces it. More than two digits are
/// refused visibly: the edit turns red, and finishing it brings the shown number back.
class BankNumberEdit : public QLineEdit
{
    Q_OBJECT

public:
    explicit BankNumberEdit(QWidget *parent);

    void showBank(int bank);

signals:
    /// The user has finished a number.
    void entered(int bank);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void focusOutEvent(QFocusEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;

private:
    void finish();
    void showNumber(int bank);
    void setRefused(bool refused);

    int shown = 0;
    bool isRefused = false;
};
