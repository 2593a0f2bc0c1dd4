#include "app/GuardedApplication.h"

#include <QTimer>

#include <stdexcept>
#include <string>

/// A program whose event handler throws: `ThrowingProgram known|unknown`.
int main(int argc, char** argv)
{
    const bool isKnown = argc > 1 && std::string(argv[1]) == "known";
    const GuardedApplication application(argc, argv);
    QTimer::singleShot(0, [isKnown] {
        if (isKnown) throw std::runtime_error("the paint has run out");
        throw 1;
    });
    return QApplication::exec();
}
