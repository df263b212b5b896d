#include "protocol/failure.h"

#include <stdexcept>

void fail(const std::string &message) { throw new std::runtime_error(message); }
