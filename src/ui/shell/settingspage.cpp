#include "ui/shell/settingspage.h"

#include "model/datafromdevice.h"
#include "ui/look.h"

#include <QGridLayout>
#include <QLabel>

namespace {

constexpr int labelWidth = 250;
constexpr int boxWidth = 270;
constexpr int boxHeight = 36;
constexpr int columnGap = 80;
constexpr int gridColumns = 3;  // label, box, gap

}  // namespace

SettingsPage::SettingsPage(QWidget *page, int rowsPerColumn) : grid(new QGridLayout(page)), rows(rowsPerColumn)
{
    grid->setContentsMargins(54, 44, 54, 44);
    grid->setVerticalSpacing(26);
    grid->setHorizontalSpacing(0);
    grid->setRowStretch(rows, 1);
    grid->setColumnStretch(2 * gridColumns, 1);
}

ComboBox *SettingsPage::add(const QString &text, const QString &objectName, const QStringList &items,
                            const QString &help)
{
    const int row = count % rows;
    const int column = count / rows * gridColumns;
    ++count;

    auto *label = new QLabel(text, grid->parentWidget());
    label->setFont(look::pixelFont(DataFromDevice::fontSettingsLabel));
    label->setFixedSize(labelWidth, boxHeight);
    label->setToolTip(help);
    ComboBox *const box = look::makeComboBox(grid->parentWidget(), items);
    box->setObjectName(objectName);
    box->setAccessibleName(text);
    box->setAccessibleDescription(help);
    box->setFixedSize(boxWidth, boxHeight);
    box->showStored(-1);
    label->setBuddy(box);

    grid->addWidget(label, row, column);
    grid->addWidget(box, row, column + 1);
    grid->setColumnMinimumWidth(column + 2, columnGap);
    return box;
}
