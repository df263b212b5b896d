#pragma once

#include "model/datafromdevice.h"
#include "ui/library/librarymodel.h"
#include "ui/library/libraryreading.h"

#include <QSortFilterProxyModel>
#include <QTimer>
#include <QWidget>

#include <functional>
#include <set>

class Arranging;
class LibraryActions;
class LibraryView;
class QLineEdit;
class QProgressBar;
class QPushButton;

/// Shows the rows in which something is found.
class LibraryFilter : public QSortFilterProxyModel
{
    Q_OBJECT

public:
    explicit LibraryFilter(LibraryModel &library);

protected:
    bool filterAcceptsRow(int row, const QModelIndex &parent) const override;

private:
    LibraryModel &model;
};

/// The library page: all banks and presets at a glance, and what is searched for in them. It reads what is not known
/// yet when it is opened, and goes on until it is stopped.
class LibraryWidget : public QWidget
{
    Q_OBJECT

public:
    /// `mayChange` tells whether the user may change anything now.
    LibraryWidget(Arranging &arranging, std::function<bool()> mayChange, QWidget *parent);

    /// The page has come up: what is not known is read, unless the user has stopped that.
    void opened();
    void unitLost();
    void readFailed();
    /// Scrolls to these banks and presets, and lights them up for a second.
    void lightUp(const std::set<RecordId> &records);
    /// Selects these presets, and shows all rows.
    void select(const std::set<RecordId> &presets);

public slots:
    void loadDataFromDevice(DataFromDevice *dataFromDevice);
    void gotBankAndPresetData(int bank);
    void gotMidiDevicesData();

signals:
    /// Asks for records, those of one portion.
    void recordsWanted(const std::set<RecordId> &records);
    /// The user wants to edit a bank.
    void bankOpened(int bank);
    void sheetsAsked(const std::set<int> &banks);
    /// One change is to be made to all presets of a selection.
    void changeAsked(const std::set<RecordId> &selection);
    void changeBankNameSignal(const QString &name, int bank);
    void changePresetNameSignal(const QString &name, int bank, int preset);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void makeFind();
    void makeReading();
    void showReading();
    void startOrStop();
    /// From the search to what was found.
    void enterTable();

    LibraryModel model;
    LibraryFilter filter;
    LibraryReading reading;
    QTimer lightsOut;
    QLineEdit *find;
    QProgressBar *progress;
    QPushButton *stopButton;
    LibraryView *view;
    LibraryActions *actions = nullptr;
    bool isStopped = false;  ///< by the user
};
