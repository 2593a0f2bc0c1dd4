#pragma once

#include <QString>

class QWidget;

/// The question where to save or export. Main thread.
namespace SaveDialog {
struct Question
{
    QString title;
    QString suggestion; ///< a whole path; its ending chooses the entry of the filter that is shown first
    QString filter;     ///< entries parted by ";;"
};

/// The path with an ending, put on where the user wrote none; empty when cancelled.
QString Ask(QWidget* parent, const Question& question);
} // namespace SaveDialog
