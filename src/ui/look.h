#pragma once

#include "model/enumerations.h"

#include <QFont>
#include <QIcon>
#include <QPalette>
#include <QString>
#include <QStringList>
#include <QVector>

class ComboBox;
class QAbstractButton;
class QLineEdit;
class QMenu;
class QPushButton;
class QTableWidget;
class QWidget;

/// Colours, style sheets and the makers of the widgets that the pages, tables and dialogs share.
namespace look {

inline const QString windowColor = QStringLiteral("#2F2F31");
inline const QString pageColor = QStringLiteral("#525051");
inline const QString tabColor = QStringLiteral("#404042");  ///< of a page or sub-tab button that is not selected
inline const QString cellColor = QStringLiteral("#000000");
inline const QString acceptColor = QStringLiteral("#00ab00");
inline const QString rejectColor = QStringLiteral("#ab0000");
inline const QString selectionColor = QStringLiteral("#828282");
inline const QString undoneColor = QStringLiteral("#a0a0a0");  ///< of text that does not count at present
inline const QString focusColor = QStringLiteral("#ffffff");   ///< stands out from every ground and function colour

/// The windows' layout is fixed in pixels for text of one pixel a point, so text takes its point size in pixels,
/// whatever resolution the desktop reports.
QFont pixelFont(const QFont &font);

/// The colour of a footswitch function as "#rrggbb"; empty for a number that is no function.
QString functionColor(FootswitchType function);

/// A frame around what has the focus: "QPushButton:focus { ... }". A widget with a style sheet of its own needs the
/// rule there, since that sheet goes before the window's.
QString focusRule(const QString &selectors);
/// What the main window and every dialog set as their own style sheet: ground, tool tips, scroll bars, tables, visible
/// focus.
QString windowStyle();
/// Dark, for what the style sheets leave to the widget style: message boxes, the file dialog.
QPalette darkPalette();
QString editStyle();
/// The closed box takes `background`; the colour stands in a line of its own, for `setBackgroundLine`.
QString comboBoxStyle(const QString &background);
/// A page or sub-tab button.
QString tabButtonStyle(bool selected);
/// A flat button with an icon, a text or both, that takes `hoverColor` under the mouse.
QString plainButtonStyle(const QString &hoverColor);
/// A button that answers, white on black, and takes `hoverColor` under the mouse.
QString answerButtonStyle(const QString &hoverColor);
QString menuStyle();
QString progressStyle();

/// Replaces the first line of the widget's style sheet that sets a background colour by `line`, or appends `line` where
/// there is none. A style sheet that would stay the same is not set again: setting one is dear.
void setBackgroundLine(QWidget *widget, const QString &line);
/// Gives the widget the colour of a footswitch function; a number that is no function leaves it as it is.
void wearFunctionColor(QWidget *widget, FootswitchType function);

/// Makes an edit black with white text.
void dressEdit(QLineEdit *edit);
/// A box with these items that shows the first. The open list has rows of comfortable height and cuts long texts at
/// their end.
ComboBox *makeComboBox(QWidget *parent, const QStringList &items, const QString &background = cellColor);
/// A box with the footswitch functions in their colours; the closed box does not follow a choice by itself.
ComboBox *makeFunctionBox(QWidget *parent);
/// The numbers from `first` to `last`, as texts.
QStringList numberTexts(int first, int last);
/// The drawing of that name. It is read once, however many widgets wear it.
QIcon icon(const char *name);
/// The same, but faint on a button that is disabled.
QIcon fadingIcon(const char *name);
/// A button with an icon alone: `name` is its tool tip and accessible name.
void makeIconButton(QAbstractButton *button, const QIcon &icon, const QSize &iconSize, const QString &name);

struct Column
{
    QString header;
    int width;  ///< pixels
};

/// Headers, widths and row height (pixels) that every table shares: fixed sections, texts left and vertically centred.
void prepareTable(QTableWidget *table, const QVector<Column> &columns, int rowHeight);
/// Makes Tab walk the table's cell widgets row by row.
void orderTabs(const QTableWidget *table);

/// A line above a menu's entries that says what they are about.
void addHeading(QMenu &menu, const QString &text);

}  // namespace look
