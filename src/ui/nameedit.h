#pragma once

#include <QLineEdit>

/// An edit for a text that the unit holds. It tells what the user has altered from what it was made to show, so that
/// only that is sent; a refresh leaves text that is being typed alone, and Escape brings the unit's text back. A text
/// that does not fit ends in an ellipsis while it is not edited, and has a tool tip.
class NameEdit : public QLineEdit
{
    Q_OBJECT

public:
    explicit NameEdit(QWidget *parent, const QString &text = QString());

    /// Makes the edit show the unit's text from its beginning, without announcing it.
    void showStored(const QString &text);
    /// Brings the text back that it was last made to show.
    void takeBack();
    bool isAltered() const { return text() != stored; }

protected:
    bool event(QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    /// Whether the text is wider than its place.
    bool isCut() const;
    /// Where the text stands.
    QRect textPlace() const;

    QString stored;
};
