#pragma once

#include "comparison.h"
#include "device/kora.h"
#include "link/connection.h"
#include "simulator/unitport.h"

#include <QSerialPort>

#include <benchmark/benchmark.h>
#include <string>
#include <vector>

inline constexpr unsigned int timeout = 2000;  // ms

/// A unit with an editor's handle on it and a bare port.
struct Bench
{
    void exchangeBare(const Frame &request) { exchangeBare({request.toString()}); }
    /// Exchanges the frames one after the other, the port open from the first to the last.
    void exchangeBare(const std::vector<std::string> &requests)
    {
        port.open(QIODevice::ReadWrite);
        for (const std::string &request : requests) {
            port.write(request.c_str());
            port.waitForBytesWritten(timeout);
            for (QByteArray answer; !answer.endsWith('\x03'); answer += port.readAll())
                if (port.bytesAvailable() == 0) port.waitForReadyRead(timeout);
        }
        port.close();
    }

    UnitPort unit{musicianContent(), std::chrono::milliseconds(0)};
    QString location = QString::fromStdString(unit.location());
    KORA kora{std::make_shared<Connection>(location, timeout)};
    QSerialPort port{location};
};

inline void report(benchmark::State &state, const Comparison &comparison, double limit)
{
    state.counters["cost_us"] = 1e6 * comparison.cost();
    state.counters["base_us"] = 1e6 * comparison.base();
    state.counters["ratio"] = comparison.ratio();
    state.counters["limit"] = limit;
}

template <typename Work, typename Base>
void compare(benchmark::State &state, double limit, Work work, Base base)
{
    Comparison comparison;
    for ([[maybe_unused]] auto turn : state)
        comparison.measure(work, base);
    report(state, comparison, limit);
}
