#pragma once

#include <QByteArray>

#include <functional>

namespace cli::interrupt {

/// From now on SIGINT, SIGTERM and SIGHUP are noted; the second time each ends the program at once. A pipe that nobody
/// reads fails the write instead of ending the program.
void install();
/// The number of the last signal noted; 0 when there was none.
int caughtSignal();
/// Throws `Failure` when one was noted, as long as nothing was written.
void check();
/// What `read` returns, which may wait for input that does not come. Throws `Failure` when a signal is noted meanwhile,
/// and leaves `read` behind on a thread of its own.
QByteArray await(std::function<QByteArray()> read);

}  // namespace cli::interrupt
