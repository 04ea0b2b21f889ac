// SPDX-License-Identifier: MIT

// A window with nothing in it: what any program with this toolkit takes to show itself.
#include <QApplication>
#include <QMainWindow>

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    QMainWindow window;
    window.resize(640, 480);
    window.show();
    QApplication::exec();
    return 1;  // ended without a first paint
}
