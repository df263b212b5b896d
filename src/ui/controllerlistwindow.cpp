#include "ui/controllerlistwindow.h"

#include "ui/controlvalue.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

#include <algorithm>
#include <iterator>

ControllerListWindow::ControllerListWindow(DataFromDevice *model, int deviceIndex, QWidget *parent)
    : MidiDeviceDialog(QStringLiteral("ControllerListWindow"), parent)
{
    const MidiDevice device = copyOf(model->midiDevices.at(static_cast<std::size_t>(deviceIndex)));
    QLabel *const title = makeTitle(deviceIndex, device.name);
    table = makeTable({{"NO", 60}, {"NAME", 150}, {"NUMBER", 130}}, 525);
    for (const Controller &controller : device.controllers)
        addController(controller);
    look::orderTabs(table);

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

    auto *label = new QPushButton(number);
    label->setFont(look::pixelFont(DataFromDevice::fontTableContent));
    label->setStyleSheet(QStringLiteral("background-color: %1;\ncolor: white;\nborder-radius: 5;\ntext-align: center;")
                             .arg(look::cellColor));
    label->setFocusPolicy(Qt::NoFocus);
    label->setAutoDefault(false);
    table->setCellWidget(row, 0, label);

    QLineEdit *const name = look::makeEdit(QString::fromStdString(controller.name));
    name->setAccessibleName(tr("Name of controller %1").arg(number));
    name->setCursorPosition(0);
    table->setCellWidget(row, 1, name);
    nameEdits << name;

    QComboBox *const box = look::makeComboBox(controllerNumberTexts());
    box->setAccessibleName(tr("Number of controller %1").arg(number));
    box->setCurrentIndex(controlValueIndex(controller.number));
    table->setCellWidget(row, 2, box);
    numberBoxes << box;
}

QVector<QString> ControllerListWindow::names() const
{
    QVector<QString> texts;
    std::transform(nameEdits.begin(), nameEdits.end(), std::back_inserter(texts),
                   [](const QLineEdit *edit) { return edit->text(); });
    return texts;
}

QVector<int> ControllerListWindow::numbers() const
{
    QVector<int> chosen;
    std::transform(numberBoxes.begin(), numberBoxes.end(), std::back_inserter(chosen),
                   [](const QComboBox *box) { return controlValueAt(box->currentIndex()); });
    return chosen;
}

void ControllerListWindow::keyPressEvent(QKeyEvent *event)
{
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enter && table->isAncestorOf(focusWidget()))
        focusNextChild();
    else
        MidiDeviceDialog::keyPressEvent(event);
}
