#include "ui/library/librarywidget.h"

#include "ui/highlight.h"
#include "ui/library/libraryactions.h"
#include "ui/library/libraryview.h"
#include "ui/look.h"

#include <QHBoxLayout>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>

namespace {

constexpr int barHeight = 30;

}  // namespace

LibraryFilter::LibraryFilter(LibraryModel &library) : model(library)
{
    setSourceModel(&model);
    connect(&model, &LibraryModel::findChanged, this, [this] { invalidateFilter(); });
}

bool LibraryFilter::filterAcceptsRow(int row, const QModelIndex &) const { return model.isFound(row); }

LibraryWidget::LibraryWidget(Arranging &arranging, std::function<bool()> mayChange, QWidget *parent)
    : QWidget(parent), filter(model), find(new QLineEdit(this)), progress(new QProgressBar(this)),
      stopButton(new QPushButton(this)), view(new LibraryView(this))
{
    makeFind();
    makeReading();
    view->setObjectName(QStringLiteral("tableView_library"));
    view->setAccessibleName(tr("All banks and presets"));
    view->setModel(&filter);
    actions = new LibraryActions(*view, arranging, std::move(mayChange));
    connect(actions, &LibraryActions::sheetsAsked, this, &LibraryWidget::sheetsAsked);
    connect(actions, &LibraryActions::changeAsked, this, &LibraryWidget::changeAsked);
    connect(actions, &LibraryActions::openAsked, this, &LibraryWidget::bankOpened);
    connect(&model, &LibraryModel::changeBankNameSignal, this, &LibraryWidget::changeBankNameSignal);
    connect(&model, &LibraryModel::changePresetNameSignal, this, &LibraryWidget::changePresetNameSignal);
    connect(&model, &LibraryModel::findChanged, view->viewport(), qOverload<>(&QWidget::update));
    lightsOut.setSingleShot(true);
    lightsOut.setInterval(Highlight::duration);
    connect(&lightsOut, &QTimer::timeout, this, [this] { model.light({}); });

    auto *const bar = new QHBoxLayout;
    bar->setSpacing(12);
    bar->addWidget(find, 1);
    bar->addWidget(progress, 1);
    bar->addWidget(stopButton);
    bar->addStretch(1);
    auto *const layout = new QVBoxLayout(this);
    layout->setContentsMargins(14, 12, 8, 12);
    layout->setSpacing(8);
    layout->addLayout(bar);
    layout->addWidget(view);
}

// --- Find

void LibraryWidget::makeFind()
{
    find->setObjectName(QStringLiteral("lineEdit_find"));
    find->setAccessibleName(tr("Find"));
    find->setPlaceholderText(tr("Find a bank, a preset or a MIDI device"));
    find->setToolTip(QStringLiteral("Ctrl+F"));
    find->setFixedHeight(barHeight);
    look::dressEdit(find);
    find->installEventFilter(this);
    connect(find, &QLineEdit::textChanged, &model, &LibraryModel::setFind);
    connect(find, &QLineEdit::returnPressed, this, &LibraryWidget::enterTable);
    const auto onKeys = [this](const char *keys, Qt::ShortcutContext context, auto act) {
        auto *const shortcut = new QShortcut(QKeySequence(QLatin1String(keys)), this);
        shortcut->setContext(context);
        connect(shortcut, &QShortcut::activated, this, act);
    };
    onKeys("Ctrl+F", Qt::WindowShortcut, [this] {
        find->setFocus(Qt::ShortcutFocusReason);
        find->selectAll();
    });
    onKeys("Esc", Qt::WidgetWithChildrenShortcut, [this] { find->clear(); });
}

bool LibraryWidget::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != find || event->type() != QEvent::KeyPress || static_cast<QKeyEvent *>(event)->key() != Qt::Key_Down)
        return QWidget::eventFilter(watched, event);
    enterTable();
    return true;
}

void LibraryWidget::changeEvent(QEvent *event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::EnabledChange && actions) actions->update();  // what a veil has greyed comes back
}

void LibraryWidget::enterTable()
{
    view->setFocus();
    for (int row = 0; row < filter.rowCount(); ++row)
        for (int column = 0; column < LibraryModel::ColumnCount; ++column)
            if (const QModelIndex cell = filter.index(row, column); cell.data(LibraryModel::MatchRole).toBool())
                return view->setCurrentIndex(cell);
    if (!view->currentIndex().isValid()) view->setCurrentIndex(filter.index(0, LibraryModel::NameColumn));
}

// --- Reading

void LibraryWidget::makeReading()
{
    progress->setObjectName(QStringLiteral("progressBar_library"));
    progress->setAccessibleName(tr("Progress of reading"));
    progress->setRange(0, LibraryReading::portionCount);
    progress->setTextVisible(false);
    progress->setFixedHeight(16);
    progress->setStyleSheet(look::progressStyle());
    stopButton->setObjectName(QStringLiteral("pushButton_stopReading"));
    stopButton->setFont(look::pixelFont(DataFromDevice::fontTabs));
    stopButton->setFixedSize(100, barHeight);
    stopButton->setStyleSheet(look::answerButtonStyle(look::selectionColor));
    connect(stopButton, &QPushButton::clicked, this, &LibraryWidget::startOrStop);
    connect(&reading, &LibraryReading::wanted, this, &LibraryWidget::recordsWanted);
    connect(&reading, &LibraryReading::changed, this, &LibraryWidget::showReading);
    showReading();
}

void LibraryWidget::showReading()
{
    const bool isUnfinished = reading.isRunning() || (reading.done() > 0 && !reading.isComplete());
    progress->setValue(reading.done());
    progress->setVisible(isUnfinished);
    stopButton->setVisible(isUnfinished);
    stopButton->setText(reading.isRunning() ? QStringLiteral("STOP") : QStringLiteral("READ ON"));
    stopButton->setToolTip(reading.isRunning() ? tr("Stops reading the banks") : tr("Reads the other banks"));
}

void LibraryWidget::startOrStop()
{
    isStopped = reading.isRunning();
    if (isStopped)
        reading.stop();
    else
        reading.start();
}

void LibraryWidget::opened()
{
    actions->updateClipboard();
    if (!isStopped) reading.start();
}

void LibraryWidget::unitLost()
{
    reading.stop();
    actions->update();
}

void LibraryWidget::readFailed() { reading.stop(); }

void LibraryWidget::loadDataFromDevice(DataFromDevice *dataFromDevice)
{
    isStopped = false;
    model.setUnit(dataFromDevice);
    reading.setUnit(dataFromDevice);
    actions->update();
}

void LibraryWidget::gotBankAndPresetData(int bank)
{
    model.refreshBank(bank);
    reading.announced();
}

void LibraryWidget::gotMidiDevicesData()
{
    model.refreshDevices();
    reading.announced();
}

// --- Where it happened

void LibraryWidget::lightUp(const std::set<RecordId> &records)
{
    if (records.empty()) return;
    const RecordId &first = *records.begin();
    const int column = first.kind == RecordId::Kind::Bank ? static_cast<int>(LibraryModel::NameColumn)
                                                          : LibraryModel::FirstPresetColumn + first.preset;
    const QModelIndex cell = filter.mapFromSource(model.index(first.number, column));
    if (cell.isValid()) view->scrollTo(cell);
    model.light(records);
    lightsOut.start();
}

void LibraryWidget::select(const std::set<RecordId> &presets)
{
    find->clear();
    QItemSelection cells;
    for (const RecordId &id : presets) {
        const QModelIndex cell =
            filter.mapFromSource(model.index(id.number, LibraryModel::FirstPresetColumn + id.preset));
        cells.select(cell, cell);
    }
    view->selectionModel()->select(cells, QItemSelectionModel::ClearAndSelect);
    if (!cells.isEmpty()) view->scrollTo(cells.front().topLeft());
}
