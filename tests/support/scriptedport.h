#pragma once

#include "simulator/pseudoterminal.h"
#include "simulator/terminalline.h"
#include "unit/commandframe.h"

#include <mutex>
#include <thread>
#include <vector>

/// A serial line whose other end answers each command with the next of some prepared replies, bytes as they are; an
/// empty reply, and every one after the last, is silence.
class ScriptedPort
{
public:
    explicit ScriptedPort(std::vector<std::string> replies)
        : server([this, script = std::move(replies)](const std::stop_token &stop) { serve(stop, script); })
    {}

    std::string location() const { return terminal.location(); }

    /// The data parts of the commands so far.
    std::vector<std::string> requests() const
    {
        const std::lock_guard lock(mutex);
        return received;
    }

private:
    void serve(const std::stop_token &stop, const std::vector<std::string> &replies)
    {
        TerminalLine line(terminal, stop);
        for (std::size_t exchange = 0; !stop.stop_requested(); ++exchange) {
            std::string request;
            while (!request.ends_with('\x03'))
                if (!line.receive(request)) return;
            {
                const std::lock_guard lock(mutex);
                received.push_back(parseFrame(request).data);
            }
            if (exchange < replies.size()) line.send(replies[exchange]);
        }
    }

    PseudoTerminal terminal;
    mutable std::mutex mutex;
    std::vector<std::string> received;
    std::jthread server;
};
