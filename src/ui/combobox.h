#pragma once

#include <QComboBox>

/// A box in a page full of boxes, where every change goes to the unit at once: neither the wheel nor a key changes it
/// while it is closed. Space, Enter and Alt+Down open its list, and only there values change; Up and Down go to the
/// row above or below.
class ComboBox : public QComboBox
{
    Q_OBJECT

public:
    /// Makes the box show the item that stands for the unit's value (-1: none), without announcing it.
    void showStored(int index);
    /// Brings the item back that the box was last made to show.
    void takeBack() { showStored(stored); }
    /// Replaces the items without announcing it; the shown place stays.
    void setItems(const QStringList &items);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    int stored = 0;
};
