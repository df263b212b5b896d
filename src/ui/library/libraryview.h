#pragma once

#include "model/unitcontent.h"

#include <QModelIndex>
#include <QTableView>

#include <optional>
#include <set>

/// The table of the library, whose source is a `LibraryModel` behind a filter. It knows what is selected, and what is
/// dragged: presets, or banks by their numbers.
class LibraryView : public QTableView
{
    Q_OBJECT

public:
    explicit LibraryView(QWidget *parent);

    void setModel(QAbstractItemModel *model) override;

    /// What is selected, as records; a bank's number and its name stand for the whole bank.
    std::set<RecordId> selection() const;
    /// The banks in whose rows something is selected.
    std::set<int> selectedBanks() const;
    /// The bank or preset of the current cell, if there is one.
    std::optional<RecordId> currentRecord() const;
    /// Selects the rows of these banks, as far as they are shown.
    void selectBanks(int first, int count);
    /// The bank of a row, filtered or not.
    int bankOf(const QModelIndex &index) const;

signals:
    void presetsDropped(const std::set<RecordId> &presets, const RecordId &target, bool copies);
    void banksDropped(const std::set<int> &banks, int target);

protected:
    /// Makes no use of what a drag leaves to the model: a cell that was moved from is not emptied.
    void startDrag(Qt::DropActions actions) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;

private:
    RecordId recordOf(const QModelIndex &index) const;
    /// What is dragged comes from here; a drag that comes from elsewhere is not taken.
    bool isDragging() const { return !dragged.empty() || !draggedBanks.empty(); }

    std::set<RecordId> dragged;  ///< presets, while they are dragged
    std::set<int> draggedBanks;
};
