#pragma once

namespace cli {

/// The whole program: reads the command line, does what it asks for and returns what to exit with.
int run(int argc, char **argv);

}  // namespace cli
