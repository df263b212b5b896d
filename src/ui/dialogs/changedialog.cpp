#include "ui/dialogs/changedialog.h"

#include "model/datafromdevice.h"
#include "model/midiuse.h"
#include "model/places.h"
#include "model/values.h"
#include "ui/combobox.h"
#include "ui/controlvalue.h"
#include "ui/look.h"
#include "ui/tables/midisummary.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QStackedWidget>
#include <QVBoxLayout>

#include <utility>

namespace {

constexpr int labelWidth = 170;  // pixels
constexpr QSize boxSize(280, 28);
constexpr int lineSpacing = 8;   // pixels
constexpr int countHeight = 66;  // pixels, for three lines

/// A list whose first item leaves a value as it is.
QStringList withAsItIs(const QStringList &items) { return QStringList{QStringLiteral("AS IT IS")} + items; }

/// What an item of such a list stands for.
template <typename Value>
std::optional<Value> unlessAsItIs(const ComboBox *box)
{
    const int index = box->currentIndex() - 1;
    if (index < 0) return std::nullopt;
    if constexpr (std::is_enum_v<Value>)
        return fromIndex<Value>(index);
    else
        return static_cast<Value>(index);
}

/// The place in its device's list, from 1, of the controller that a box shows, if it shows one.
std::optional<std::uint8_t> controllerOf(const ComboBox *box)
{
    const QVariant position = box->currentData();
    return position.isValid() ? std::optional(static_cast<std::uint8_t>(position.toInt())) : std::nullopt;
}

/// "LOOP 1" to the last
QStringList numbered(const char *name, int last)
{
    QStringList texts;
    for (int number = 1; number <= last; ++number)
        texts << QStringLiteral("%1 %2").arg(QLatin1String(name)).arg(number);
    return texts;
}

QString textOf(const arrange::ChangeCount &count)
{
    const auto lineOf = [](int presets, const char *one, const char *many) {
        return presets == 0 ? QString() : places::counted(static_cast<std::size_t>(presets), one, many);
    };
    QString changes = lineOf(count.presets, "preset changes, ", "presets change, ");
    changes += changes.isEmpty() ? QStringLiteral("Nothing changes.") : lineOf(count.values, "value.", "values.");
    QStringList lines{
        changes,
        lineOf(count.notAllowed, "preset stays as it is: its function does not allow it.",
               "presets stay as they are: their function does not allow it."),
        lineOf(count.noRoom, "preset stays as it is: it has no room for another control change.",
               "presets stay as they are: they have no room for another control change."),
    };
    lines.removeAll(QString());
    return lines.join(QLatin1Char('\n'));
}

}  // namespace

ChangeDialog::ChangeDialog(const QString &selection, const Devices &definitions, Counter counter, QWidget *parent)
    : AnswerDialog(QStringLiteral("ChangeDialog"), parent), devices(definitions), countOf(std::move(counter)),
      pages(new QStackedWidget(this))
{
    auto *const head = new QGridLayout;
    head->setContentsMargins(0, 0, 0, 0);
    kinds = addBox(head, QStringLiteral("change"), QStringLiteral("CHANGE"), QStringList(), 0);
    chosen = {makeFunctionPage(), makeLoopPage(),  makeSwitchPage(), makeProgramPage(),
              makeControlPage(),  makePedalPage(), makeNamePage()};
    kinds->showStored(0);
    count = makeLabel(QStringLiteral("label_count"), QString(), DataFromDevice::fontTableContent);
    count->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    count->setFixedHeight(countHeight);

    QVBoxLayout *const layout = makeRows();
    layout->addWidget(makeLabel(QStringLiteral("label_selection"), QStringLiteral("CHANGE IN %1").arg(selection),
                                DataFromDevice::fontDeviceStatus));
    layout->addLayout(head);
    layout->addWidget(pages);
    layout->addWidget(count);
    layout->addLayout(makeAnswers());
    layout->setSizeConstraint(QLayout::SetFixedSize);

    connect(kinds, qOverload<int>(&QComboBox::currentIndexChanged), pages, &QStackedWidget::setCurrentIndex);
    for (ComboBox *const box : findChildren<ComboBox *>())
        connect(box, qOverload<int>(&QComboBox::currentIndexChanged), this, &ChangeDialog::showCount);
    for (QLineEdit *const edit : findChildren<QLineEdit *>())
        connect(edit, &QLineEdit::textChanged, this, &ChangeDialog::showCount);
    showCount();
}

std::optional<PresetChange> ChangeDialog::change() const
{
    return chosen.at(static_cast<std::size_t>(pages->currentIndex()))();
}

void ChangeDialog::showCount()
{
    const std::optional<PresetChange> wanted = change();
    const arrange::ChangeCount counted = wanted ? countOf(*wanted) : arrange::ChangeCount();
    count->setText(wanted ? textOf(counted) : tr("Choose what it shall become."));
    enableOk(counted.values > 0);
}

// --- Boxes

QGridLayout *ChangeDialog::addPage(const QString &kind)
{
    auto *const page = new QWidget(pages);
    auto *const rows = new QGridLayout(page);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setVerticalSpacing(lineSpacing);
    rows->setAlignment(Qt::AlignTop);
    pages->addWidget(page);
    kinds->addItem(kind);
    return rows;
}

template <typename Editor>
Editor *ChangeDialog::add(QGridLayout *page, const QString &role, const QString &text, Editor *editor)
{
    QLabel *const label = makeLabel(QStringLiteral("label_") + role, text, DataFromDevice::fontTableContent);
    label->setFixedWidth(labelWidth);
    label->setBuddy(editor);
    editor->setObjectName(
        (std::is_same_v<Editor, ComboBox> ? QStringLiteral("comboBox_") : QStringLiteral("lineEdit_")) + role);
    editor->setAccessibleName(text);
    editor->setFixedSize(boxSize);
    const int row = page->rowCount();
    page->addWidget(label, row, 0, Qt::AlignLeft);
    page->addWidget(editor, row, 1, Qt::AlignRight);
    return editor;
}

ComboBox *ChangeDialog::addBox(QGridLayout *page, const QString &role, const QString &text, const QStringList &items,
                               int shown)
{
    ComboBox *const box = add(page, role, text, look::makeComboBox(this, items));
    box->showStored(shown);
    return box;
}

QLineEdit *ChangeDialog::addEdit(QGridLayout *page, const QString &role, const QString &text)
{
    auto *const edit = new QLineEdit(this);
    look::dressEdit(edit);
    return add(page, role, text, edit);
}

ComboBox *ChangeDialog::addControllers(QGridLayout *page, const QString &role, ComboBox *deviceBox, int firstDevice)
{
    ComboBox *const box = addBox(page, role, QStringLiteral("CONTROLLER"), QStringList());
    const auto fill = [this, box, firstDevice](int index) {
        const QSignalBlocker blocker(box);
        box->clear();
        if (index >= firstDevice) {
            const MidiDevice &definition = devices.at(static_cast<std::size_t>(index - firstDevice));
            for (const std::uint8_t position : definedControllers(definition))
                box->addItem(controllerName(definition, position), position);
            box->setEnabled(box->count() > 0);
            if (box->count() == 0) box->addItem(QStringLiteral("NO CONTROLLERS DEFINED"));
        } else {
            box->setEnabled(false);
        }
        box->setCurrentIndex(box->isEnabled() ? -1 : 0);
    };
    connect(deviceBox, qOverload<int>(&QComboBox::currentIndexChanged), box, fill);
    fill(deviceBox->currentIndex());
    return box;
}

QStringList ChangeDialog::deviceNames() const
{
    QStringList names;
    for (const MidiDevice &device : devices)
        names << QStringLiteral("MIDI %1 : %2")
                     .arg(QString::number(names.size() + 1), QString::fromStdString(device.name));
    return names;
}

// --- Kinds of changes

ChangeDialog::Chosen ChangeDialog::makeFunctionPage()
{
    QGridLayout *const page = addPage(QStringLiteral("FOOTSWITCH FUNCTION"));
    ComboBox *const functions =
        add(page, QStringLiteral("function"), QStringLiteral("BECOMES"), look::makeFunctionBox(this));
    functions->showStored(-1);
    look::setBackgroundLine(functions, QStringLiteral("background-color: %1;").arg(look::cellColor));
    connect(functions, qOverload<int>(&QComboBox::currentIndexChanged), functions,
            [functions](int index) { look::wearFunctionColor(functions, fromIndex<FootswitchType>(index)); });
    return [=]() -> std::optional<PresetChange> {
        if (functions->currentIndex() < 0) return std::nullopt;
        return FunctionChange{fromIndex<FootswitchType>(functions->currentIndex())};
    };
}

ChangeDialog::Chosen ChangeDialog::makeLoopPage()
{
    QGridLayout *const page = addPage(QStringLiteral("BUFFER OR LOOP"));
    ComboBox *const loops = addBox(page, QStringLiteral("loop"), QStringLiteral("LOOP"),
                                   QStringList{QStringLiteral("BUFFER")} + numbered("LOOP", loopCount), 0);
    ComboBox *const states = addBox(page, QStringLiteral("loopState"), QStringLiteral("BECOMES"), labels<LoopType>());
    return [=]() -> std::optional<PresetChange> {
        if (states->currentIndex() < 0) return std::nullopt;
        return LoopChange{loops->currentIndex(), fromIndex<LoopType>(states->currentIndex())};
    };
}

ChangeDialog::Chosen ChangeDialog::makeSwitchPage()
{
    QGridLayout *const page = addPage(QStringLiteral("SWITCH"));
    ComboBox *const switches =
        addBox(page, QStringLiteral("switch"), QStringLiteral("SWITCH"), numbered("SWITCH", switchCount), 0);
    ComboBox *const states =
        addBox(page, QStringLiteral("switchState"), QStringLiteral("BECOMES"), labels<SwitchType>());
    return [=]() -> std::optional<PresetChange> {
        if (states->currentIndex() < 0) return std::nullopt;
        return SwitchChange{switches->currentIndex() + 1, fromIndex<SwitchType>(states->currentIndex())};
    };
}

ChangeDialog::Chosen ChangeDialog::makeProgramPage()
{
    QGridLayout *const page = addPage(QStringLiteral("PROGRAM CHANGE"));
    ComboBox *const device =
        addBox(page, QStringLiteral("programDevice"), QStringLiteral("MIDI DEVICE"), deviceNames(), 0);
    ComboBox *const program = addBox(page, QStringLiteral("program"), QStringLiteral("BECOMES"),
                                     withInactive(look::numberTexts(1, range::program.high)));
    return [=]() -> std::optional<PresetChange> {
        if (program->currentIndex() < 0) return std::nullopt;
        return ProgramChange{device->currentIndex() + 1,
                             static_cast<std::uint8_t>(valueOrNone(program->currentIndex()))};
    };
}

ChangeDialog::Chosen ChangeDialog::makeControlPage()
{
    QGridLayout *const page = addPage(QStringLiteral("CONTROL CHANGE"));
    ComboBox *const device =
        addBox(page, QStringLiteral("controlDevice"), QStringLiteral("MIDI DEVICE"), deviceNames(), 0);
    ComboBox *const controllers = addControllers(page, QStringLiteral("control"), device);
    ComboBox *const where = addBox(page, QStringLiteral("controlWhere"), QStringLiteral("WHERE IT IS"),
                                   QStringList{QStringLiteral("ANYTHING")} + controlValueTexts(), 0);
    ComboBox *const value =
        addBox(page, QStringLiteral("controlValue"), QStringLiteral("BECOMES"), controlValueTexts());
    return [=]() -> std::optional<PresetChange> {
        const auto controller = controllerOf(controllers);
        if (!controller || value->currentIndex() < 0) return std::nullopt;
        const int held = where->currentIndex() - 1;
        return ControlChange{static_cast<std::uint8_t>(device->currentIndex() + 1), *controller,
                             controlValueAt(value->currentIndex()),
                             held < 0 ? std::nullopt : std::optional(controlValueAt(held))};
    };
}

ChangeDialog::Chosen ChangeDialog::makePedalPage()
{
    constexpr int inactive = 1, firstDevice = 2;
    QGridLayout *const page = addPage(QStringLiteral("EXPRESSION PEDAL"));
    ComboBox *const device = addBox(page, QStringLiteral("pedalDevice"), QStringLiteral("MIDI DEVICE"),
                                    withAsItIs(withInactive(deviceNames())), 0);
    ComboBox *const controllers = addControllers(page, QStringLiteral("pedalController"), device, firstDevice);
    ComboBox *const characteristic = addBox(page, QStringLiteral("characteristic"), QStringLiteral("CHARACTERISTIC"),
                                            withAsItIs(labels<ExpressionPedalCharacteristic>()), 0);
    const QStringList values = withAsItIs(look::numberTexts(range::midi.low, range::midi.high));
    ComboBox *const toeUp = addBox(page, QStringLiteral("toeUpValue"), QStringLiteral("TOE UP VALUE"), values, 0);
    ComboBox *const toeDown = addBox(page, QStringLiteral("toeDownValue"), QStringLiteral("TOE DOWN VALUE"), values, 0);
    return [=]() -> std::optional<PresetChange> {
        PedalChange change{{},
                           {},
                           unlessAsItIs<ExpressionPedalCharacteristic>(characteristic),
                           unlessAsItIs<std::uint8_t>(toeUp),
                           unlessAsItIs<std::uint8_t>(toeDown)};
        const int chosenDevice = device->currentIndex() - firstDevice;
        if (chosenDevice >= 0) {
            change.device = static_cast<std::uint8_t>(chosenDevice + 1);
            change.controller = controllerOf(controllers);
            if (!change.controller) return std::nullopt;
        } else if (device->currentIndex() == inactive) {
            change.controller = none;
        }
        return change;
    };
}

ChangeDialog::Chosen ChangeDialog::makeNamePage()
{
    QGridLayout *const page = addPage(QStringLiteral("NAME"));
    QLineEdit *const text = addEdit(page, QStringLiteral("text"), QStringLiteral("TEXT"));
    QLineEdit *const replacement = addEdit(page, QStringLiteral("replacement"), QStringLiteral("BECOMES"));
    return [=]() -> std::optional<PresetChange> {
        if (text->text().isEmpty()) return std::nullopt;
        return NameChange{text->text().toStdString(), nameText(replacement->text())};
    };
}
