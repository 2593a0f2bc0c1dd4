#include "BlendContests.h"
#include "Contest.h"
#include "FillContests.h"
#include "MergedContests.h"
#include "PathContests.h"
#include "TransformContests.h"

#include <QCoreApplication>
#include <QStringList>

#include <cstdio>

// compare [--side N] [PART]: our kernels beside those of other libraries, in one run, once on one thread and
// once on two; PART picks the jobs whose name contains it.

int main(int argc, char** argv)
{
    try {
        const QCoreApplication application(argc, argv);
        QStringList arguments = QCoreApplication::arguments().mid(1);
        int side = 4096;
        const auto sideAt = arguments.indexOf(QStringLiteral("--side"));
        if (sideAt >= 0 && sideAt + 1 < arguments.size()) {
            side = arguments[sideAt + 1].toInt();
            arguments.removeAt(sideAt + 1);
            arguments.removeAt(sideAt);
        }
        if (!arguments.isEmpty()) Contests::SetFilter(arguments.first());
        std::printf("%d x %d, medians of 7 runs\n", side, side);
        for (const int threads : {1, 2}) {
            Contests::PrintHeader(threads);
            FillContests::Run(side, threads);
            BlendContests::Run(side, threads);
            MergedContests::Run(threads);
            PathContests::Run(side, threads);
            TransformContests::Run(side, threads);
        }
        return 0;
    } catch (const std::exception& exception) {
        std::fprintf(stderr, "%s\n", exception.what());
        return 1;
    }
}
