#include "cli/program.h"

/// The unit from scripts and from where there is no display.
int main(int argc, char **argv) { return cli::run(argc, argv); }
