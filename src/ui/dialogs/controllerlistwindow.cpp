#include "ui/dialogs/controllerlistwindow.h"

#include "model/qtversions.h"
#include "ui/combobox.h"
#include "ui/controlvalue.h"
#include "ui/nameedit.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QPushButton>
#include <QShortcut>
#include <QTableWidget>
#include <QVBoxLayout>

ControllerListWindow::ControllerListWindow(const MidiDevice &device, int deviceIndex, QWidget *parent)
    : MidiDeviceDialog(QStringLiteral("ControllerListWindow"), parent), stored(device.controllers)
{
    QLabel *const title = makeTitle(deviceIndex, device.name);
    table = makeTable({{"NO", 60}, {"NAME", 150}, {"NUMBER", 130}, {"PRESETS", 80}}, 525);
    for (const Controller &controller : stored)
        addController(controller);
    look::orderTabs(table);
    markDoubtful();
    for (const auto &[key, step] : {std::pair(Qt::Key_Up, -1), {Qt::Key_Down, 1}}) {
        auto *shortcut = new QShortcut(QKeySequence(static_cast<int>(Qt::ALT) + key), this);
        connect(shortcut, &QShortcut::activated, this, [this, step = step] { moveFocused(step); });
    }

    QVBoxLayout *const layout = makeRows();
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

    QPushButton *const label =
        makeCell(row, 0, number,
                 QStringLiteral("background-color: %1;\ncolor: white;\nborder-radius: 5;\ntext-align: center;")
                     .arg(look::cellColor));
    label->setFocusPolicy(Qt::NoFocus);
    label->setCursor(Qt::SizeVerCursor);
    label->installEventFilter(this);
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
    connect(box, qOverload<int>(&QComboBox::currentIndexChanged), this, &ControllerListWindow::markDoubtful);

    QPushButton *const uses = makeCell(row, 3, QString(), look::plainButtonStyle(look::selectionColor));
    uses->setAccessibleName(tr("Presets that send to controller %1").arg(number));
    uses->setToolTip(tr("How many presets send to it; a click is OK and shows them"));
    uses->setEnabled(false);
    connect(uses, &QPushButton::clicked, this, [this, row] {
        asked = places.at(static_cast<std::size_t>(row));
        on_pushButton_ok_clicked();
    });
    useButtons << uses;
}

QPushButton *ControllerListWindow::makeCell(int row, int column, const QString &text, const QString &style)
{
    auto *button = new QPushButton(text, table->viewport());
    button->setFont(look::pixelFont(DataFromDevice::fontTableContent));
    button->setStyleSheet(style);
    button->setAutoDefault(false);
    table->setCellWidget(row, column, button);
    return button;
}

void ControllerListWindow::showUses(const QStringList &counts)
{
    for (int row = 0; row < useButtons.size(); ++row)
        showUses(row, counts[row]);
}

void ControllerListWindow::showUses(int row, const QString &count)
{
    useButtons[row]->setText(count);
    useButtons[row]->setEnabled(!count.isEmpty());
}

// --- The order

void ControllerListWindow::moveFocused(int step)
{
    const QWidget *const focused = table->focusWidget();
    if (!focused || !table->isAncestorOf(focused)) return;
    const QModelIndex place = table->indexAt(focused->mapTo(table->viewport(), focused->rect().center()));
    const int to = place.row() + step;
    if (!place.isValid() || to < 0 || to >= nameEdits.size()) return;
    swapRows(place.row(), to);
    table->cellWidget(to, place.column())->setFocus(Qt::TabFocusReason);
    table->scrollTo(place.sibling(to, 0));
}

void ControllerListWindow::swapRows(int row, int other)
{
    const QString name = nameEdits[row]->text(), otherName = nameEdits[other]->text();
    const int number = numberBoxes[row]->currentIndex(), otherNumber = numberBoxes[other]->currentIndex();
    const QString uses = useButtons[row]->text(), otherUses = useButtons[other]->text();
    std::swap(places.at(static_cast<std::size_t>(row)), places.at(static_cast<std::size_t>(other)));
    const auto show = [this](int at, const QString &text, int item, const QString &count) {
        const std::size_t place = places.at(static_cast<std::size_t>(at));
        nameEdits[at]->showStored(QString::fromStdString(stored.at(place).name));
        nameEdits[at]->setText(text);
        nameEdits[at]->setCursorPosition(0);
        numberBoxes[at]->setCurrentIndex(item);
        showUses(at, count);
    };
    show(row, otherName, otherNumber, otherUses);
    show(other, name, number, uses);
}

bool ControllerListWindow::eventFilter(QObject *watched, QEvent *event)
{
    const int label = static_cast<int>(labels.indexOf(static_cast<QPushButton *>(watched)));
    if (label >= 0) drag(label, event);
    return MidiDeviceDialog::eventFilter(watched, event);
}

void ControllerListWindow::drag(int label, QEvent *event)
{
    if (event->type() == QEvent::MouseButtonPress) draggedRow = label;
    if (event->type() != QEvent::MouseMove) return;  // told only while a button is held
    const QPoint place = table->viewport()->mapFromGlobal(screenPlaceOf(*static_cast<QMouseEvent *>(event)));
    const int to = table->rowAt(place.y());
    while (to >= 0 && draggedRow != to) {
        const int next = draggedRow + (to > draggedRow ? 1 : -1);
        swapRows(draggedRow, next);
        draggedRow = next;
    }
}

// --- What is doubtful, what was altered

void ControllerListWindow::markDoubtful()
{
    for (int row = 0; row < labels.size(); ++row) {
        const QString reason = doubtAbout(row);
        look::setBackgroundLine(
            labels[row],
            QStringLiteral("background-color: %1;").arg(reason.isEmpty() ? look::cellColor : look::rejectColor));
        labels[row]->setToolTip(reason.isEmpty() ? tr("Drag it, or Alt+Up and Alt+Down, to move the controller")
                                                 : reason);
        numberBoxes[row]->setToolTip(reason);
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
        const std::size_t place = places.at(static_cast<std::size_t>(row));
        if (nameEdits[row]->isAltered()) edit.names[place] = nameEdits[row]->text().toStdString();
        const int number = numberBoxes[row]->currentIndex();
        if (number != controlValueIndex(stored.at(place).number)) edit.numbers[place] = controlValueAt(number);
    }
    return edit;
}
