#pragma once

#include <QPushButton>

/// Tool tips have no plain-text format: a text that would be taken for markup comes back as markup that reads like it.
QString plainToolTip(const QString &text);

/// A button in the colour of a footswitch function whose text is a name from the unit. The name shows as it is, an
/// ampersand included, and shortened where it does not fit: text() and the tool tip hold all of it. Alt+Down presses
/// it, as it opens the boxes beside it.
class NameButton : public QPushButton
{
public:
    explicit NameButton(QWidget *parent, const QString &color);

    /// Use this rather than setText(), which would take an ampersand for the mark of a shortcut.
    void setName(const QString &name);
    /// Shows a dot: there is more to it than the name.
    void setMarked(bool marked);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    bool isMarked = false;
};
