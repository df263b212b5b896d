// What it costs to show a bank: one that is shown already, held against setting bare widgets, and one of other colours,
// held against the bare restyling of its cells. The exit status tells whether both are within their limits.

#include "comparison.h"
#include "controller/devicecontroller.h"
#include "simulator/unitport.h"
#include "standin.h"
#include "ui/tables/tabfootswitchfunction.h"
#include "ui/tables/tabloops.h"
#include "ui/tables/tabmidi.h"
#include "ui/tables/tabswitch.h"
#include "ui/tables/tabwahpads.h"

#include <QApplication>
#include <QTableWidget>

#include <functional>
#include <memory>
#include <vector>

namespace {

constexpr int bank = 0;
constexpr int unchangedRounds = 20000;
constexpr int recolouredRounds = 40;

/// The five tables as the main window holds them: one is shown.
class Tables
{
public:
    explicit Tables(DataFromDevice *data)
    {
        window.setStyleSheet(look::windowStyle());
        window.resize(1322, 709);
        add<TabFootswitchFunction>(5);
        add<TabLoops>(11);
        add<TabSwitch>(10);
        add<TabMidi>(14);
        add<TabWahPads>(5);
        for (std::size_t i = 0; i < tabs.size(); ++i) {
            tabs[i]->loadDataFromDevice(data);
            if (i > 0) tabs[i]->hide();
        }
        window.show();
        show();
    }

    void show() const
    {
        for (const auto &tab : tabs)
            tab->gotBankAndPresetData(bank);
        QApplication::processEvents();
    }

    const QWidget &ground() const { return window; }

    /// The cells that wear the colour of a preset's function.
    QVector<QWidget *> colouredCells() const
    {
        const QString color = QStringLiteral("background-color: ") + look::functionColor(FootswitchType::Preset);
        QVector<QWidget *> cells;
        for (QTableWidget *const table : window.findChildren<QTableWidget *>())
            for (int row = 0; row < table->rowCount(); ++row)
                for (int column = 0; column < table->columnCount(); ++column)
                    if (QWidget *const cell = table->cellWidget(row, column);
                        cell && cell->styleSheet().contains(color))
                        cells << cell;
        return cells;
    }

private:
    template <typename Tab>
    void add(int columns)
    {
        auto *const table = new QTableWidget(1, columns, &window);
        table->setGeometry(66, 140, 1194, 543);
        tabs.push_back(std::make_unique<Tab>(table));
    }

    QWidget window;
    std::vector<std::unique_ptr<BankTable>> tabs;
};

/// Plays the unit's panel: new names and states, and this function for every preset of the bank.
void alter(UnitPort &unit, int round, FootswitchType function)
{
    unit.alter([&](UnitMemory &memory) {
        memory.banks[bank].name = "BANK " + std::to_string(round);
        for (PresetData &preset : memory.presets[bank]) {
            preset.name = "PRESET " + std::to_string(round);
            preset.footswitchFunction = function;
            preset.loops.fill(round % 2 == 0 ? LoopType::On : LoopType::Off);
            preset.switches.fill(round % 2 == 0 ? SwitchType::On : SwitchType::Off);
        }
    });
}

/// New records that hold what the bank's hold, as a reading makes them.
void renew(DataFromDevice &data)
{
    const auto copy = [](auto &slot) {
        const auto record = slot.load();
        slot.store(std::make_shared<std::decay_t<decltype(*record)>>(*record));
    };
    copy(data.bankData[bank]);
    for (auto &preset : data.presetData[bank])
        copy(preset);
}

/// A bank that is shown already, against a look at bare widgets.
bool measureUnchanged(const Tables &tables, DataFromDevice &data)
{
    const StandIn bare(tables.ground());
    bool isAsMade = true;
    Comparison comparison;
    for (int round = 0; round < unchangedRounds; ++round) {
        renew(data);
        comparison.measure([&] { tables.show(); }, [&] { isAsMade = isAsMade && bare.isAsMade(); });
    }
    return isWithin("show_unchanged_to_look", comparison.ratio(), 2.7) && isAsMade;
}

/// A bank of other colours, against the bare restyling of the cells that wear them.
bool measureRecoloured(const Tables &tables, UnitPort &unit, const std::function<void()> &read)
{
    const QVector<QWidget *> cells = tables.colouredCells();
    Comparison comparison;
    for (int round = 1; round <= recolouredRounds; ++round) {
        alter(unit, round, FootswitchType::Preset);
        read();
        tables.show();
        QStringList before;
        for (const QWidget *cell : cells)
            before << cell->styleSheet();
        alter(unit, round, static_cast<FootswitchType>(1 + round % 3));
        read();
        const double showing = secondsOf([&] { tables.show(); });
        read();  // so that both start with caches as cold
        comparison.add(showing, secondsOf([&] {
                           for (int i = 0; i < cells.size(); ++i)
                               cells[i]->setStyleSheet(before[i]);
                           QApplication::processEvents();
                       }));
    }
    return isWithin("show_recoloured_to_restyle", comparison.ratio(), 1.2);
}

bool run()
{
    UnitPort unit;
    DeviceController controller([&] { return QStringList(QString::fromStdString(unit.location())); });
    DataFromDevice *data = nullptr;
    QObject::connect(&controller, &DeviceController::found, [&](DataFromDevice *model) { data = model; });
    controller.searchDevice();
    const auto read = [&] { controller.getBankAndPresetData(bank); };

    alter(unit, 0, FootswitchType::Preset);
    read();
    const Tables tables(data);
    const bool isCheapUnchanged = measureUnchanged(tables, *data);
    return measureRecoloured(tables, unit, read) && isCheapUnchanged;
}

}  // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    return run() ? 0 : 1;
}
