#pragma once

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QVector>

/// Bare widgets to hold a window against: as many edits, boxes and buttons, each with the same style sheet, set once,
/// and the same text, and nothing else.
class StandIn : public QWidget
{
public:
    explicit StandIn(const QWidget &window)
    {
        setStyleSheet(window.styleSheet());
        resize(window.size());
        for (const QLineEdit *like : window.findChildren<QLineEdit *>()) {
            edits << new QLineEdit(like->text(), this);
            dress(edits.last(), like->styleSheet());
            texts << like->text();
        }
        for (const QComboBox *like : window.findChildren<QComboBox *>()) {
            boxes << new QComboBox(this);
            dress(boxes.last(), like->styleSheet());
            boxes.last()->addItem(like->currentText());
        }
        for (const QPushButton *like : window.findChildren<QPushButton *>())
            dress(new QPushButton(like->text(), this), like->styleSheet());
    }

    /// Looks whether every text, shown item and style sheet is still the first one.
    bool isAsMade() const
    {
        bool same = true;
        for (int i = 0; i < edits.size(); ++i)
            same &= edits[i]->text() == texts[i];
        for (const QComboBox *box : boxes)
            same &= box->currentIndex() == 0;
        for (int i = 0; i < dressed.size(); ++i)
            same &= dressed[i]->styleSheet() == styleSheets[i];
        return same;
    }

private:
    void dress(QWidget *widget, const QString &styleSheet)
    {
        widget->setStyleSheet(styleSheet);
        dressed << widget;
        styleSheets << styleSheet;
    }

    QVector<QLineEdit *> edits;
    QVector<QComboBox *> boxes;
    QStringList texts;
    QVector<QWidget *> dressed;
    QStringList styleSheets;
};
