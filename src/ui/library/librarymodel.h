#pragma once

#include "model/datafromdevice.h"
#include "model/unitcontent.h"

#include <QAbstractTableModel>
#include <QColor>
#include <QString>

#include <array>
#include <bitset>
#include <optional>
#include <set>

/// All banks of a unit: a row a bank, with its number, its name and its ten presets in their footswitch colours. What
/// has not been read yet is empty and cannot be renamed. The model also knows which cells match what is searched for.
class LibraryModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column { NumberColumn, NameColumn, FirstPresetColumn, ColumnCount = FirstPresetColumn + presetCount };
    enum Role {
        MatchRole = Qt::UserRole,  ///< whether the cell matches; false while nothing is searched for
        DimRole,                   ///< whether something is searched for that the cell does not match
        KnownRole,                 ///< whether all that the cell stands for has been read
        LitRole                    ///< whether it shows where something has happened
    };

    explicit LibraryModel(QObject *parent = nullptr);

    /// Null shows nothing.
    void setUnit(DataFromDevice *newUnit);
    /// Takes over what is known of a bank.
    void refreshBank(int bank);
    /// Takes over what is known of the MIDI devices.
    void refreshDevices();

    /// What is searched for in the names of banks and presets, and of the MIDI devices that presets send to.
    void setFind(const QString &text);
    /// Whether a row is to be shown.
    bool isFound(int bank) const { return finds.isEmpty() || rows[static_cast<std::size_t>(bank)].matches.any(); }
    /// Lights up the cells of these records; none lets all go dark.
    void light(const std::set<RecordId> &records);

    /// The records that a cell stands for: a preset's, or those of the bank.
    static std::set<RecordId> recordsAt(int bank, int column);
    /// The one record that names a cell: the preset's or the bank's.
    static RecordId recordAt(int bank, int column);

    int rowCount(const QModelIndex &parent = {}) const override;
    int columnCount(const QModelIndex &parent = {}) const override;
    QVariant data(const QModelIndex &index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    /// Asks for a new name; the old one is shown until the unit has taken it.
    bool setData(const QModelIndex &index, const QVariant &value, int role) override;
    QStringList mimeTypes() const override { return {dragType()}; }
    Qt::DropActions supportedDropActions() const override { return Qt::MoveAction | Qt::CopyAction; }

    /// Of a drag within the table; it carries no data.
    static QString dragType() { return QStringLiteral("application/x-kora-library"); }

signals:
    void changeBankNameSignal(const QString &name, int bank);
    void changePresetNameSignal(const QString &name, int bank, int preset);
    void findChanged();

private:
    using Devices = std::bitset<midiDeviceCount>;
    struct Cell
    {
        bool operator==(const Cell &) const = default;

        QString name;
        QString folded;
        std::optional<FootswitchType> function;  ///< of a preset
        Devices devices;                         ///< that a preset sends to
        bool isKnown = false;
    };
    /// The bank's cell comes first.
    static constexpr std::size_t cellCount = 1 + presetCount;
    struct Row
    {
        std::array<Cell, cellCount> cells;
        std::bitset<cellCount> matches;
    };

    static Devices devicesOf(const PresetData &preset);
    static Cell named(const std::string &name, const Cell &present);
    /// The cell of a column; the number stands for the bank as the name does.
    const Cell &cellAt(const QModelIndex &index) const;
    static QColor groundOf(const Cell &cell);
    bool isKnown(const QModelIndex &index) const;
    bool isMatch(const QModelIndex &index) const;
    void match(Row &row) const;
    void matchAll();

    DataFromDevice *unit = nullptr;
    std::array<Row, bankCount> rows;
    std::array<QString, midiDeviceCount> deviceNames;  ///< folded
    QString finds;                                     ///< folded; empty while nothing is searched for
    Devices foundDevices;
    std::set<RecordId> lit;
};
