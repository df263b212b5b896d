#pragma once

#include <QString>
#include <QStringList>

class QComboBox;
class QGridLayout;
class QWidget;

/// Lays out one page of global settings: labels and combo boxes in aligned columns.
class SettingsPage
{
public:
    /// Fills `page` column by column, `rowsPerColumn` settings in each.
    SettingsPage(QWidget *page, int rowsPerColumn);

    /// Adds a setting; its box holds `items` and shows none.
    QComboBox *add(const QString &text, const QString &objectName, const QStringList &items);

private:
    QGridLayout *grid;
    int rows;
    int count = 0;
};
