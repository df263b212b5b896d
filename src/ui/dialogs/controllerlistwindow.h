#pragma once

#include "model/devicemoves.h"
#include "ui/dialogs/mididevicedialog.h"

#include <QStringList>

#include <array>
#include <optional>

class ComboBox;
class NameEdit;

/// Edits the 20 named controllers of a MIDI device and the order in which they stand: a controller is dragged by its
/// number, or moved by Alt+Up and Alt+Down. It sends nothing itself.
class ControllerListWindow : public MidiDeviceDialog
{
    Q_OBJECT

public:
    /// Shows the controllers of a MIDI device; `deviceIndex` counts from 0.
    ControllerListWindow(const MidiDevice &device, int deviceIndex, QWidget *parent);

    /// Shows how many presets send to each controller, by its place; a click ends the dialog as OK does.
    void showUses(const QStringList &counts);

    /// What the user has altered, by the places that the controllers had.
    ControllerEdit edit() const;
    /// Where they stand now.
    const ControllerOrder &order() const { return places; }
    /// The place that a controller had whose presets the user asks for, from 0.
    std::optional<std::size_t> askedUses() const { return asked; }

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void addController(const Controller &controller);
    QPushButton *makeCell(int row, int column, const QString &text, const QString &style);
    void showUses(int row, const QString &count);
    /// The controller in the row that has the focus changes places with the one above (-1) or below (1).
    void moveFocused(int step);
    void swapRows(int row, int other);
    void drag(int label, QEvent *event);
    /// Marks the controllers that cannot be meant so.
    void markDoubtful();
    /// Why a controller cannot be meant so; empty when it can.
    QString doubtAbout(int row) const;

    QTableWidget *table;
    QVector<QPushButton *> labels;
    QVector<NameEdit *> nameEdits;
    QVector<ComboBox *> numberBoxes;
    QVector<QPushButton *> useButtons;
    const std::array<Controller, controllerCount> stored;
    ControllerOrder places = sameOrder;
    std::optional<std::size_t> asked;
    int draggedRow = 0;
};
