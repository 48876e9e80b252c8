// SPDX-License-Identifier: MIT
#include <QApplication>
#include <QWidget>

// The least that any Qt program with a window costs, in the size of the main window.
int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    QWidget window;
    window.resize(1100, 720);
    window.show();
    return QApplication::exec();
}
