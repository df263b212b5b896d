#include "ui/look.h"

#include "model/datafromdevice.h"
#include "ui/combobox.h"
#include "ui/tablekeys.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QHeaderView>
#include <QLineEdit>
#include <QMenu>
#include <QPainter>
#include <QPushButton>
#include <QStringMatcher>
#include <QTableWidget>

#include <map>

namespace look {

namespace {

/// A text with the colour of each footswitch function, made once: cells ask for hundreds when a bank is shown.
class FunctionTexts
{
public:
    explicit FunctionTexts(const QString &pattern)
    {
        for (const auto &[function, color] : DataFromDevice::footswitchColors)
            texts[function] = pattern.arg(color.name());
    }
    /// Empty for a number that is no function.
    QString of(FootswitchType function) const
    {
        const auto text = texts.find(function);
        return text == texts.end() ? QString() : text->second;
    }

private:
    std::map<FootswitchType, QString> texts;
};

QString buttonFocus() { return focusRule(QStringLiteral("QPushButton:focus")); }

}  // namespace

QFont pixelFont(const QFont &font)
{
    QFont sized = font;
    sized.setPixelSize(font.pointSize());
    return sized;
}

QString functionColor(FootswitchType function)
{
    static const FunctionTexts colors(QStringLiteral("%1"));
    return colors.of(function);
}

QString focusRule(const QString &selectors)
{
    return QStringLiteral("%1 { border: 1px solid %2; }\n").arg(selectors, focusColor);
}

QString windowStyle()
{
    return QStringLiteral("QMainWindow, QDialog { background-color: %1; }\n"
                          "QLabel { color: white; background: transparent; }\n"
                          "QToolTip { color: white; background-color: %2; border: 1px solid white; padding: 3px; }\n"
                          "QScrollBar:vertical { background: %2; width: 12px; margin: 0px; }\n"
                          "QScrollBar::handle:vertical { background: %3; min-height: 30px; border-radius: 5; }\n"
                          "QScrollBar::add-line, QScrollBar::sub-line { height: 0px; }\n"
                          "QScrollBar::add-page, QScrollBar::sub-page { background: transparent; }\n"
                          "QMessageBox QPushButton { color: white; background-color: %2; border: 1px solid %2;"
                          " border-radius: 5; padding: 6px 26px; }\n"
                          "QTableWidget { background-color: %4; color: white; border: none; }\n"
                          "QTableWidget QHeaderView { background-color: %4; }\n"
                          "QTableWidget QHeaderView::section { background-color: %4; color: white; border: none;"
                          " padding-left: 9px; }\n"
                          "QTableWidget QLineEdit, QTableWidget QComboBox, QTableWidget QPushButton { margin: 2px;"
                          " border: 1px solid transparent; }\n")
               .arg(windowColor, tabColor, selectionColor, pageColor) +
           focusRule(QStringLiteral("QLineEdit:focus, QComboBox:focus, QPushButton:focus"));
}

QPalette darkPalette()
{
    QPalette palette{QColor(tabColor), QColor(windowColor)};  // the other shades are worked out from these two
    palette.setColor(QPalette::Base, QColor(cellColor));
    palette.setColor(QPalette::Highlight, QColor(selectionColor));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Link, QColor(focusColor));
    return palette;
}

QString editStyle()
{
    return QStringLiteral("background-color: #000000;\ncolor: #ffffff;border-radius: 5;\npadding-left: 7px;");
}

QString comboBoxStyle(const QString &background)
{
    return QStringLiteral("QComboBox{\n"
                          "  border-radius: 5;\n"
                          "background-color: %1;\n"
                          "border: 1px solid transparent;\n"
                          "color: white;\n"
                          "padding-left: 7px;\n"
                          "combobox-popup: 0;\n"
                          "}\n"
                          "QComboBox:disabled { color: #a0a0a0; }\n"
                          "QComboBox::drop-down { border: none; width: 18px; }\n"
                          "QComboBox::down-arrow { image: url(:/images/combo-arrow.png); width: 9px; height: 9px; }\n"
                          "QComboBox QAbstractItemView { color: white; background: #000000; border: 1px solid %2;\n"
                          "selection-background-color: %2; outline: none; }\n"
                          "QComboBox QAbstractItemView::item { min-height: 26px; padding-left: 4px; }\n"
                          "QComboBox QAbstractItemView::item:disabled { color: gray; }\n")
               .arg(background, selectionColor) +
           focusRule(QStringLiteral("QComboBox:focus"));
}

QString tabButtonStyle(bool selected)
{
    return QStringLiteral("QPushButton { color: white; border-radius: 8; border: none; background-color: %1;"
                          " padding: 3px; padding-left: 5px; padding-right: 5px; }\n")
               .arg(selected ? pageColor : tabColor) +
           buttonFocus();
}

QString plainButtonStyle(const QString &hoverColor)
{
    return QStringLiteral("QPushButton { color: white; background-color: transparent; border: none;"
                          " border-radius: 5; }\n"
                          "QPushButton:hover { background-color: %1; }\n")
               .arg(hoverColor) +
           buttonFocus();
}

QString answerButtonStyle(const QString &hoverColor)
{
    return QStringLiteral("QPushButton { color: white; background-color: %1; border-radius: 5;"
                          " text-align: center; }\n"
                          "QPushButton:hover { background-color: %2; }\n"
                          "QPushButton:disabled { color: gray; }\n")
               .arg(cellColor, hoverColor) +
           buttonFocus();
}

QString menuStyle()
{
    return QStringLiteral("QMenu { background-color: %1; color: white; padding: 0px; }\n"
                          "QMenu::item { padding: 6px 24px 6px 12px; }\n"
                          "QMenu::item:disabled { color: %3; }\n"
                          "QMenu::item:selected { background-color: %2; }")
        .arg(pageColor, selectionColor, undoneColor);
}

QString progressStyle()
{
    return QStringLiteral("QProgressBar { background-color: %1; border: none; border-radius: 8; }\n"
                          "QProgressBar::chunk { background-color: %2; border-radius: 8; }")
        .arg(tabColor, focusColor);
}

void setBackgroundLine(QWidget *widget, const QString &line)
{
    static const QStringMatcher backgroundColor(QStringLiteral("background-color:"));
    QString style = widget->styleSheet();
    const auto found = backgroundColor.indexIn(style);
    if (found < 0) {
        style += '\n' + line;
    } else {
        const auto start = style.lastIndexOf('\n', found) + 1;
        const auto end = style.indexOf('\n', found);
        const auto length = (end < 0 ? style.size() : end) - start;
        if (QStringView(style).mid(start, length) == line) return;
        style.replace(start, length, line);
    }
    widget->setStyleSheet(style);
}

void wearFunctionColor(QWidget *widget, FootswitchType function)
{
    static const FunctionTexts lines(QStringLiteral("background-color: %1;"));
    const QString line = lines.of(function);
    if (!line.isEmpty()) setBackgroundLine(widget, line);
}

void dressEdit(QLineEdit *edit)
{
    edit->setFont(pixelFont(DataFromDevice::fontTableContent));
    edit->setStyleSheet(editStyle());
}

ComboBox *makeComboBox(QWidget *parent, const QStringList &items, const QString &background)
{
    auto *box = new ComboBox(parent);
    box->setFont(pixelFont(DataFromDevice::fontTableContent));
    box->setStyleSheet(comboBoxStyle(background));
    box->setMaxVisibleItems(12);
    box->addItems(items);
    return box;
}

ComboBox *makeFunctionBox(QWidget *parent)
{
    ComboBox *const box = makeComboBox(parent, labels<FootswitchType>(), functionColor(FootswitchType::Preset));
    for (int index = 0; index < box->count(); ++index)
        box->setItemData(index, QBrush(QColor(functionColor(fromIndex<FootswitchType>(index)))), Qt::BackgroundRole);
    return box;
}

QStringList numberTexts(int first, int last)
{
    QStringList texts;
    texts.reserve(last - first + 1);
    for (int number = first; number <= last; ++number)
        texts << QString::number(number);
    return texts;
}

QIcon icon(const char *name) { return QIcon(QPixmap(QStringLiteral(":/images/%1.png").arg(QLatin1String(name)))); }

QIcon fadingIcon(const char *name)
{
    QIcon whole = icon(name);
    const QPixmap drawing = whole.pixmap(whole.availableSizes().constFirst());
    QPixmap faint(drawing.size());
    faint.fill(Qt::transparent);
    QPainter painter(&faint);
    painter.setOpacity(0.25);
    painter.drawPixmap(0, 0, drawing);
    painter.end();
    whole.addPixmap(faint, QIcon::Disabled);
    return whole;
}

void makeIconButton(QAbstractButton *button, const QIcon &icon, const QSize &iconSize, const QString &name)
{
    button->setIcon(icon);
    button->setIconSize(iconSize);
    button->setToolTip(name);
    button->setAccessibleName(name);
}

void prepareTable(QTableWidget *table, const QVector<Column> &columns, int rowHeight)
{
    QHeaderView *const header = table->horizontalHeader();
    header->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    header->setSectionResizeMode(QHeaderView::Fixed);
    header->setSectionsClickable(false);
    header->setHighlightSections(false);
    header->setFixedHeight(30);
    header->setFont(pixelFont(DataFromDevice::fontTableHeader));
    table->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    table->verticalHeader()->setDefaultSectionSize(rowHeight);
    table->verticalHeader()->hide();
    for (int column = 0; column < columns.size(); ++column) {
        auto *const item = new QTableWidgetItem(columns[column].header);
        item->setFont(header->font());  // the header's own does not always reach its texts
        table->setHorizontalHeaderItem(column, item);
        table->setColumnWidth(column, columns[column].width);
    }
    table->setFont(pixelFont(DataFromDevice::fontTableContent));
    table->setShowGrid(false);
    table->setFrameShape(QFrame::NoFrame);
    table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table->setSelectionMode(QAbstractItemView::NoSelection);
    table->setFocusPolicy(Qt::NoFocus);  // the cell widgets take it
    table->setTabKeyNavigation(false);   // Tab is theirs too
    table->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    new TableKeys(table);
}

void orderTabs(const QTableWidget *table)
{
    QWidget *previous = nullptr;
    for (int row = 0; row < table->rowCount(); ++row)
        for (int column = 0; column < table->columnCount(); ++column)
            if (QWidget *const widget = table->cellWidget(row, column)) {
                if (previous) QWidget::setTabOrder(previous, widget);
                previous = widget;
            }
}

void addHeading(QMenu &menu, const QString &text)
{
    QAction *const heading = menu.addAction(text);
    QFont font = pixelFont(DataFromDevice::fontTableContent);
    font.setBold(true);
    heading->setFont(font);
    heading->setEnabled(false);
    menu.addSeparator();
}

}  // namespace look
