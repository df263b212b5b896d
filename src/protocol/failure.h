#pragma once

#include <memory>
#include <optional>
#include <stdexcept>
#include <string>

/// Ends an exchange with `message`: throws a pointer to a new `std::runtime_error`. The handler owns it and puts it
/// into a `std::unique_ptr` on its first line.
[[noreturn]] void fail(const std::string &message);

/// The message of an exchange that found no unit: the port does not open, or no answer comes in time.
inline constexpr const char *receivingTimeout = "Receiving timeout";
/// Stands for an exception that is no failure by `fail()`, such as a number on the wire that is none.
inline constexpr const char *otherFailure = "Error in communication";

/// Runs `work` and returns the message that it failed with; nothing when it did not.
template <typename Work>
std::optional<std::string> caught(Work work)
{
    try {
        work();
    } catch (std::runtime_error *thrown) {
        const std::unique_ptr<std::runtime_error> failure(thrown);
        return failure->what();
    } catch (...) {
        return otherFailure;
    }
    return std::nullopt;
}
