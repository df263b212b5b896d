#include "controller/unitsearch.h"

#include "device/framefactory.h"
#include "link/connection.h"
#include "protocol/failure.h"

#include <QThread>

#include <string>

namespace {

constexpr int pauseLength = 400;  // ms between two passes over the ports
constexpr int pauseStep = 25;     // ms until a stop is noticed

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

std::optional<QString> findUnit(const PortLister &listPorts, const std::function<bool()> &stop, unsigned int timeout)
{
    const MasterFrame request = FrameFactory().readDeviceInfo();
    while (!stop()) {
        for (const QString &location : listPorts()) {
            if (stop()) return std::nullopt;
            if (answers(location, request, timeout)) return location;
        }
        for (int waited = 0; waited < pauseLength && !stop(); waited += pauseStep)
            QThread::msleep(pauseStep);
    }
    return std::nullopt;
}
