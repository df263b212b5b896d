#include "ui/dialogs/controllerlistwindow.h"

#include "ui/combobox.h"
#include "ui/controlvalue.h"
#include "ui/nameedit.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

ControllerListWindow::ControllerListWindow(const MidiDevice &device, int deviceIndex, QWidget *parent)
    : MidiDeviceDialog(QStringLiteral("ControllerListWindow"), parent)
{
    QLabel *const title = makeTitle(deviceIndex, device.name);
    table = makeTable({{"NO", 60}, {"NAME", 150}, {"NUMBER", 130}}, 525);
    for (const Controller &controller : device.controllers)
        addController(controller);
    look::orderTabs(table);
    markDoubtful();

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(20, 20, 20, 20);
    layout->setSpacing(16);
    layout->addWidget(title);
    layout->addWidget(table);
    layout->addLayout(makeAnswers());
    nameEdits.front()->setFocus();
}

void ControllerListWindow::addController(const Controller &controller)
{
    const int row = table->rowCount();
    const QString number = QString::number(row + 1);
    table->insertRow(row);

    auto *label = new QPushButton(number, table->viewport());
    label->setFont(look::pixelFont(DataFromDevice::fontTableContent));
    label->setStyleSheet(QStringLiteral("background-color: %1;\ncolor: white;\nborder-radius: 5;\ntext-align: center;")
                             .arg(look::cellColor));
    label->setFocusPolicy(Qt::NoFocus);
    label->setAutoDefault(false);
    table->setCellWidget(row, 0, label);
    labels << label;

    auto *name = new NameEdit(table->viewport(), QString::fromStdString(controller.name));
    name->setAccessibleName(tr("Name of controller %1").arg(number));
    name->setCursorPosition(0);
    table->setCellWidget(row, 1, name);
    nameEdits << name;
    connect(name, &QLineEdit::textChanged, this, &ControllerListWindow::markDoubtful);

    ComboBox *const box = look::makeComboBox(table->viewport(), controllerNumberTexts());
    box->setAccessibleName(tr("Number of controller %1").arg(number));
    box->setCurrentIndex(controlValueIndex(controller.number));
    table->setCellWidget(row, 2, box);
    numberBoxes << box;
    shownNumbers << box->currentIndex();
    connect(box, qOverload<int>(&QComboBox::currentIndexChanged), this, &ControllerListWindow::markDoubtful);
}

void ControllerListWindow::markDoubtful()
{
    for (int row = 0; row < labels.size(); ++row) {
        const QString reason = doubtAbout(row);
        look::setBackgroundLine(
            labels[row],
            QStringLiteral("background-color: %1;").arg(reason.isEmpty() ? look::cellColor : look::rejectColor));
        for (QWidget *const widget : {static_cast<QWidget *>(labels[row]), static_cast<QWidget *>(numberBoxes[row])})
            widget->setToolTip(reason);
        nameEdits[row]->setAccessibleDescription(reason);
    }
}

QString ControllerListWindow::doubtAbout(int row) const
{
    const int number = numberBoxes[row]->currentIndex();
    const bool isNumbered = number != controlValueIndex(none);
    if (isNumbered && nameEdits[row]->text().isEmpty()) return tr("This number has no name: presets cannot show it");
    if (!isNumbered && !nameEdits[row]->text().isEmpty()) return tr("This name has no number: nothing can be sent");
    for (int other = 0; isNumbered && other < numberBoxes.size(); ++other)
        if (other != row && numberBoxes[other]->currentIndex() == number)
            return tr("Controller %1 has the same number").arg(other + 1);
    return QString();
}

ControllerEdit ControllerListWindow::edit() const
{
    ControllerEdit edit;
    for (int row = 0; row < nameEdits.size(); ++row) {
        const auto slot = static_cast<std::size_t>(row);
        if (nameEdits[row]->isAltered()) edit.names[slot] = nameEdits[row]->text().toStdString();
        const int number = numberBoxes[row]->currentIndex();
        if (number != shownNumbers[row]) edit.numbers[slot] = controlValueAt(number);
    }
    return edit;
}
