#pragma once

#include <boost/lexical_cast.hpp>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <memory>
#include <stdexcept>
#include <string>

/// The fuzzer's input as protocol text.
inline std::string textOf(const std::uint8_t *bytes, std::size_t size) { return {bytes, bytes + size}; }

/// Ends the run with a finding unless `holds`.
inline void require(bool holds, const char *what)
{
    if (holds) return;
    std::cerr << "does not hold: " << what << '\n';
    std::abort();
}

/// Runs `work`, which may fail in the two ways that hostile input is allowed to make it fail. Returns whether it did
/// not; anything else that is thrown is a finding.
template <typename Work>
bool succeeds(Work work)
{
    try {
        work();
        return true;
    } catch (std::runtime_error *thrown) {
        const std::unique_ptr<std::runtime_error> failure(thrown);
    } catch (const boost::bad_lexical_cast &) {
        // a number that is none
    }
    return false;
}
