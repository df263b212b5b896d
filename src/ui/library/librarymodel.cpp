#include "ui/library/librarymodel.h"

#include "model/controlchanges.h"
#include "model/functionrules.h"
#include "model/places.h"
#include "ui/library/foldedtext.h"
#include "ui/look.h"
#include "ui/tables/midisummary.h"

#include <algorithm>
#include <utility>

namespace {

std::size_t cellIndex(int column)
{
    return column < LibraryModel::FirstPresetColumn
               ? 0
               : static_cast<std::size_t>(column - LibraryModel::FirstPresetColumn + 1);
}

}  // namespace

LibraryModel::LibraryModel(QObject *parent) : QAbstractTableModel(parent) {}

void LibraryModel::setUnit(DataFromDevice *newUnit)
{
    unit = newUnit;
    for (Row &row : rows)
        row = {};
    lit.clear();
    for (int bank = 0; bank < bankCount; ++bank)
        refreshBank(bank);
    refreshDevices();
    emit dataChanged(index(0, 0), index(bankCount - 1, ColumnCount - 1));
}

// --- What is known

LibraryModel::Devices LibraryModel::devicesOf(const PresetData &preset)
{
    Devices devices;
    if (!sendsMidi(preset.footswitchFunction)) return devices;
    const auto add = [&](int device) {
        if (range::device.contains(device)) devices.set(static_cast<std::size_t>(device - 1));
    };
    for (int device = 1; device <= midiDeviceCount; ++device)
        if (preset.programChanges[static_cast<std::size_t>(device - 1)] != none) add(device);
    for (const auto &[place, value] : messagesOf(preset.controlChanges))
        add(place.first);
    const PresetExpressionPedal &pedal = preset.expressionPedal;
    if (!rowOf<&PresetExpressionPedal::controllerNumber>().range.isNone(pedal.controllerNumber))
        add(pedal.midiDeviceNumber);
    return devices;
}

LibraryModel::Cell LibraryModel::named(const std::string &name, const Cell &present)
{
    Cell cell;
    cell.name = QString::fromStdString(name);
    cell.folded = cell.name == present.name ? present.folded : foldedText(cell.name);
    cell.isKnown = true;
    return cell;
}

void LibraryModel::refreshBank(int bank)
{
    if (!unit || bank < 0 || bank >= bankCount) return;
    const auto number = static_cast<std::size_t>(bank);
    Row &row = rows[number];
    Row fresh = row;
    if (const auto record = unit->bankData[number].load()) fresh.cells[0] = named(record->name, row.cells[0]);
    for (std::size_t preset = 0; preset < presetCount; ++preset) {
        const auto record = unit->presetData[number][preset].load();
        if (!record) continue;
        Cell &cell = fresh.cells[preset + 1];
        cell = named(record->name, cell);
        cell.function = record->footswitchFunction;
        cell.devices = devicesOf(*record);
    }
    if (fresh.cells == row.cells) return;
    match(fresh);
    row = std::move(fresh);
    emit dataChanged(index(bank, 0), index(bank, ColumnCount - 1));
}

void LibraryModel::refreshDevices()
{
    std::array<QString, midiDeviceCount> names;
    for (std::size_t device = 0; unit && device < midiDeviceCount; ++device)
        if (const auto record = unit->midiDevices[device].load())
            names[device] = foldedText(QString::fromStdString(record->name));
    if (std::exchange(deviceNames, names) != names && !finds.isEmpty()) matchAll();
}

// --- What is searched for

void LibraryModel::setFind(const QString &text)
{
    const QString folded = foldedText(text.trimmed());
    if (std::exchange(finds, folded) != folded) matchAll();
}

void LibraryModel::matchAll()
{
    foundDevices.reset();
    for (std::size_t device = 0; device < midiDeviceCount; ++device)
        foundDevices.set(device, !finds.isEmpty() && deviceNames[device].contains(finds));
    for (Row &row : rows)
        match(row);
    emit findChanged();
}

void LibraryModel::match(Row &row) const
{
    row.matches.reset();
    if (finds.isEmpty()) return;
    for (std::size_t cell = 0; cell < cellCount; ++cell)
        row.matches.set(cell, row.cells[cell].folded.contains(finds) || (row.cells[cell].devices & foundDevices).any());
}

void LibraryModel::light(const std::set<RecordId> &records)
{
    lit = records;
    emit dataChanged(index(0, 0), index(bankCount - 1, ColumnCount - 1), {LitRole});
}

// --- Cells

std::set<RecordId> LibraryModel::recordsAt(int bank, int column)
{
    return column < FirstPresetColumn ? recordsOfBank(bank) : std::set<RecordId>{recordAt(bank, column)};
}

RecordId LibraryModel::recordAt(int bank, int column)
{
    if (column < FirstPresetColumn) return {RecordId::Kind::Bank, bank};
    return {RecordId::Kind::Preset, bank, column - FirstPresetColumn};
}

int LibraryModel::rowCount(const QModelIndex &parent) const { return parent.isValid() ? 0 : bankCount; }

int LibraryModel::columnCount(const QModelIndex &parent) const { return parent.isValid() ? 0 : ColumnCount; }

const LibraryModel::Cell &LibraryModel::cellAt(const QModelIndex &index) const
{
    return rows[static_cast<std::size_t>(index.row())].cells[cellIndex(index.column())];
}

bool LibraryModel::isMatch(const QModelIndex &index) const
{
    return index.column() != NumberColumn &&
           rows[static_cast<std::size_t>(index.row())].matches[cellIndex(index.column())];
}

bool LibraryModel::isKnown(const QModelIndex &index) const
{
    if (index.column() >= FirstPresetColumn) return cellAt(index).isKnown;
    return std::ranges::all_of(rows[static_cast<std::size_t>(index.row())].cells, &Cell::isKnown);
}

QColor LibraryModel::groundOf(const Cell &cell)
{
    const auto color =
        cell.function ? DataFromDevice::footswitchColors.find(*cell.function) : DataFromDevice::footswitchColors.end();
    if (color != DataFromDevice::footswitchColors.end()) return color->second;
    return cell.isKnown ? look::cellColor : look::tabColor;
}

QVariant LibraryModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid()) return {};
    const Cell &cell = cellAt(index);
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
        if (index.column() == NumberColumn) return index.row();
        return cell.name;
    case Qt::BackgroundRole:
        return groundOf(cell);
    case Qt::AccessibleTextRole: {
        const RecordId id = recordAt(index.row(), index.column());
        return QStringLiteral("%1: %2").arg(places::record(id), cell.name);
    }
    case MatchRole:
        return isMatch(index);
    case DimRole:
        return !finds.isEmpty() && index.column() != NumberColumn && !isMatch(index);
    case KnownRole:
        return isKnown(index);
    case LitRole:
        return lit.contains(recordAt(index.row(), index.column()));
    default:
        return {};
    }
}

QVariant LibraryModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Vertical) return {};
    if (role == Qt::FontRole) return look::pixelFont(DataFromDevice::fontTableHeader);
    if (role == Qt::TextAlignmentRole) return static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter);
    if (role != Qt::DisplayRole) return {};
    if (section == NumberColumn) return QStringLiteral("B");
    if (section == NameColumn) return QStringLiteral("BANK NAME");
    return section - FirstPresetColumn;
}

Qt::ItemFlags LibraryModel::flags(const QModelIndex &index) const
{
    if (!index.isValid()) return Qt::NoItemFlags;
    Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDropEnabled;
    if (index.column() != NameColumn) flags |= Qt::ItemIsDragEnabled;
    if (index.column() != NumberColumn && cellAt(index).isKnown) flags |= Qt::ItemIsEditable;
    return flags;
}

bool LibraryModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (role != Qt::EditRole || !flags(index).testFlag(Qt::ItemIsEditable)) return false;
    if (index.column() == NameColumn)
        emit changeBankNameSignal(value.toString(), index.row());
    else
        emit changePresetNameSignal(value.toString(), index.row(), index.column() - FirstPresetColumn);
    return true;
}
