#pragma once

#include <QString>

class QCommandLineParser;
class QCoreApplication;

/// What the programs that show the editor do alike, in the order of their calls.
namespace startup {

/// Before the application object is made: crisp drawing on screens with a scale factor.
void prepareScreen();
/// The next, with the program's arguments: where the desktop's scale makes the screen too small for the window,
/// everything is drawn smaller, and where it is a hair beside a quarter's multiple, at that.
void fitToScreen(int argc, char **argv);
/// Registers the compiled-in fonts and sets the widget style that the style sheets build upon.
void prepareApplication();
/// Reads the command line and returns the file on it that is to be worked on, or nothing; ends the program when there
/// is more.
QString fileArgument(QCommandLineParser &options, const QCoreApplication &application);

}  // namespace startup
