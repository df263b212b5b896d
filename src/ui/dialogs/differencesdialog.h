#pragma once

#include "model/differences.h"
#include "ui/dialogs/framelessdialog.h"

#include <vector>

class QTreeWidget;
class QTreeWidgetItem;

/// Shows in what a unit and a file differ: parts, in them banks and devices, in them values. For a restore each has a
/// check box; exec() answers Accepted when what is checked is to be written.
class DifferencesDialog : public FramelessDialog
{
    Q_OBJECT

public:
    enum class Purpose { Restore, Compare };

    /// `fileName` heads the column of the values that stand against the unit's.
    DifferencesDialog(std::vector<Difference> all, Purpose purpose, const QString &fileName, QWidget *parent);

    /// The differences that are checked; those that cannot be written never are.
    std::vector<Difference> chosen() const;

public slots:
    void on_pushButton_restore_clicked();
    void on_pushButton_cancel_clicked();

private:
    void fill(Purpose purpose);

    std::vector<Difference> shown;
    std::vector<QTreeWidgetItem *> items;  // by difference; the tree owns them
    QTreeWidget *tree;
};
