#pragma once

#include "model/datafromdevice.h"

#include <QDate>
#include <QString>

#include <set>

/// Sheets for the floor and the band: banks as a PDF of A4 pages that brings its fonts along.
namespace sheets {

/// The banks (0 to 99) of which something is known that differs from what a cleared unit holds.
std::set<int> banksWithContent(DataFromDevice &data);

/// Writes a set list of the banks (0 to 99), then their pictures, two on a page, each with what its footswitches send.
/// Every page tells `name`, of the file or the unit, the date and its number. Returns why the file could not be
/// written, empty if it was; what stood there before stays then.
QString save(const QString &path, const DataFromDevice &data, const std::set<int> &banks, const QString &name,
             const QDate &date);

}  // namespace sheets
