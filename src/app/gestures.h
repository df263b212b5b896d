#pragma once

#include <QLatin1String>
#include <QString>
#include <QTableWidget>

#include <functional>

class QComboBox;
class QLineEdit;

/// What a user does to the editor's widgets, told to the widgets alone: no pointer moves, no window needs the focus.
namespace gestures {

/// Presses and releases a key.
void key(QWidget &widget, int code, const QString &text = QString());
void clickOn(QWidget &widget);
/// Replaces the text and presses Return.
void type(QLineEdit &edit, const QString &text);
/// Opens the box's list, moves to the item and takes it.
void chooseFrom(QComboBox &box, const QString &item);

/// Runs the event loop until `reached` holds; false when that takes longer than `patience`.
bool waitFor(const std::function<bool()> &reached);
constexpr int patience = 10000;  ///< milliseconds for one step, also on a slow and busy machine

/// The widget of that name; the program ends where there is none.
template <typename Widget>
Widget &find(QWidget &parent, const char *name)
{
    auto *const found = parent.findChild<Widget *>(QLatin1String(name));
    if (!found) qFatal("the window has no %s", name);
    return *found;
}

template <typename Widget>
Widget &cell(QWidget &parent, const char *table, int row, int column)
{
    auto *const found = qobject_cast<Widget *>(find<QTableWidget>(parent, table).cellWidget(row, column));
    if (!found) qFatal("%s has no such widget in row %d, column %d", table, row, column);
    return *found;
}

}  // namespace gestures
