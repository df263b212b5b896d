#pragma once

#include <QComboBox>

#include <functional>

/// A box in a page full of boxes, where every change goes to the unit at once: neither the wheel nor a key changes it
/// while it is closed. Space, Enter and Alt+Down open its list, and only there values change; Up and Down go to the
/// row above or below.
class ComboBox : public QComboBox
{
    Q_OBJECT

public:
    using QComboBox::QComboBox;

    /// Makes the box show the item that stands for the unit's value (-1: none), without announcing it.
    void showStored(int index);
    /// Brings the item back that the box was last made to show.
    void takeBack() { showStored(stored); }
    /// `reason` says why an item may not be chosen now, or nothing: asked of each item when the list opens, where it
    /// then stands greyed with the reason as its tool tip.
    void setRefusal(std::function<QString(int index)> reason) { refusal = std::move(reason); }
    /// An item that stands out while the closed box shows it.
    void setBoldItem(int index) { boldItem = index; }
    /// Looks as if nothing depended on it, for the reason that its tool tip then tells; an empty one ends that.
    void setIdle(const QString &reason);
    /// Replaces the items without announcing it; the shown place stays.
    void setItems(const QStringList &items);

    /// Room for a line of text: the width is its place's, and thousands of items take long to measure.
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }
    void showPopup() override;

protected:
    void changeEvent(QEvent *event) override;
    void childEvent(QChildEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;

private:
    void prepareList();
    void greyRefusedItems();

    std::function<QString(int index)> refusal;
    int boldItem = -1;
    bool isIdle = false;
    int stored = 0;
    bool hasList = false;  ///< the list that opens is made and prepared
};
