#pragma once

#include <QString>

class QCommandLineParser;
class QCoreApplication;
class QSize;

/// What the programs that show the editor do alike, in the order of their calls.
namespace startup {

/// Before the application object is made: crisp drawing on screens with a scale factor.
void prepareScreen();
/// How much smaller than designed the main window has to be drawn for a screen with so much room; 1 where it fits.
double fitting(const QSize &room);
/// The next, with the program's arguments: on a screen that is too small for the window everything is drawn smaller.
void fitToScreen(int argc, char **argv);
/// Registers the compiled-in fonts and sets the widget style that the style sheets build upon.
void prepareApplication();
/// Reads the command line and returns the file on it that is to be worked on, or nothing; ends the program when there
/// is more.
QString fileArgument(QCommandLineParser &options, const QCoreApplication &application);

}  // namespace startup
