#include "controller/unitsearch.h"

#include "device/framefactory.h"
#include "link/connection.h"
#include "protocol/failure.h"

#include <QThread>

#include <algorithm>
#include <string>

namespace {

constexpr unsigned int pauseStep = 25;  // ms until a stop is noticed

bool answers(const QString &location, const MasterFrame &request, unsigned int timeout)
{
    const auto failure = caught([&] {
        Connection probe(location, timeout);
        std::string anyAnswer;
        probe << request;
        probe >> anyAnswer;
    });
    // Whatever else a foreign device makes of the request is not worth a word.
    if (failure && *failure != otherFailure) qDebug("%s", failure->c_str());
    return !failure;
}

}  // namespace

std::optional<QString> findUnit(const PortLister &listPorts, const std::function<bool()> &stop, unsigned int timeout,
                                unsigned int pause)
{
    const MasterFrame request = FrameFactory().readDeviceInfo();
    while (!stop()) {
        for (const QString &location : listPorts()) {
            if (stop()) return std::nullopt;
            if (answers(location, request, timeout)) return location;
        }
        for (unsigned int waited = 0; waited < pause && !stop(); waited += pauseStep)
            QThread::msleep(std::min(pauseStep, pause));
    }
    return std::nullopt;
}
