#pragma once

#include "cli/arguments.h"

namespace cli {

class Console;

// What each command does. They return a `Status` or throw `Failure`.
int info(const Arguments &arguments, Console &console);
int backup(const Arguments &arguments, Console &console);
int compare(const Arguments &arguments, Console &console);
int show(const Arguments &arguments, Console &console);
int restore(const Arguments &arguments, Console &console);
int clear(const Arguments &arguments, Console &console);
int copyOrSwap(const Arguments &arguments, Console &console);
int firmware(const Arguments &arguments, Console &console);

}  // namespace cli
