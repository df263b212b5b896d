#include "link/connection.h"
#include "ui/shell/mainwindow.h"
#include "ui/shell/startup.h"

#include <QApplication>

int main(int argc, char **argv)
{
    startup::prepareScreen();
    QApplication application(argc, argv);
    Connection::enableLog = true;
    startup::prepareApplication();

    MainWindow window;
    window.show();
    return application.exec();
}
