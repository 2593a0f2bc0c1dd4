#pragma once

#include "EditorExport.h"

#include <QCoreApplication>
#include <QString>
#include <QStringList>

/// What `zenkari batch` was told to do. Plain values; reading them starts nothing.
struct BatchLine
{
    enum class Task
    {
        Run,
        Help,  ///< print `text`
        Wrong, ///< nothing can be done; `text` tells why
    };

    Task task = Task::Run;
    QString text;
    QString script;
    QStringList files;     ///< those of this shard, in the order given
    QStringList arguments; ///< what each script gets behind its file
    int jobs = 1;          ///< processes at the same time
    int timeLimit = 0;     ///< ms for each file; 0 for none
    QString
        pictureFolder; ///< where pictures of failures go, a folder for each file; empty for the usual place
};

/// Reads the arguments behind the word `batch`. Needs an application object, of any kind.
class ZK_EDITOR_EXPORT BatchLineReader
{
    Q_DECLARE_TR_FUNCTIONS(BatchLineReader)

public:
    /// The word that stands first when the program is to run a batch.
    static constexpr const char* Word = "batch";

    /// @param arguments  the program's name, `batch`, and the rest
    static BatchLine Read(const QStringList& arguments);

    /// Those of many files that belong to one of several shards: every `count`-th, from the `index`-th on.
    /// Together the shards have each file once, and their sizes differ by one at most.
    /// @param index  from 1 to count
    static QStringList Shard(const QStringList& files, int index, int count);

private:
    struct Options;

    static BatchLine Interpret(const Options& options);
    static QString ReadNumbers(const Options& options, BatchLine& line);
    static QString ReadShard(const QString& text, BatchLine& line);
};
