#pragma once

#include <string>

/// Ends an exchange with `message`: throws a pointer to a new `std::runtime_error`. The handler owns it and puts it
/// into a `std::unique_ptr` on its first line.
[[noreturn]] void fail(const std::string &message);
