#pragma once

#include <chrono>
#include <memory>
#include <stdexcept>
#include <string>

/// The message that `work` fails with by the project's error convention (a thrown pointer); empty if it returns.
template <typename Work>
std::string failureOf(Work work)
{
    try {
        work();
    } catch (std::runtime_error *thrown) {
        const std::unique_ptr<std::runtime_error> failure(thrown);
        return failure->what();
    }
    return {};
}

/// How long `work` takes, in milliseconds.
template <typename Work>
auto millisecondsOf(Work work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start).count();
}
