#include "app/BatchRun.h"
#include "support/TestRegistry.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

/// The pool of processes, with little programs in the editor's place.
class TestBatchRun : public QObject
{
    Q_OBJECT

private slots:
    void theProcessGetsScriptAndFile();
    void processesShareTheMemory();
    void aCrashIsAFailure();
    void aProgramThatDoesNotStartIsAFailureForEachFile();
    void noMoreProcessesRunThanJobs();
};

namespace {
class Batch
{
public:
    /// @param program  a shell script in the editor's place
    explicit Batch(const QByteArray& program)
    {
        Write("script.js", QByteArray());
        m_Program = Write("program", "#!/bin/sh\ncd '" + m_Folder.path().toUtf8() + "'\n" + program);
        QFile::setPermissions(m_Program, QFile::ReadOwner | QFile::ExeOwner);
        line.script = m_Folder.filePath("script.js");
        line.files = QStringList{"a", "b c", "d"};
    }

    int Run() { return BatchRun(line, m_Program).Run(); }

    QByteArray Read(const QString& name) const
    {
        QFile file(m_Folder.filePath(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QString Path() const { return m_Folder.path(); }

    BatchLine line;

private:
    QString Write(const QString& name, const QByteArray& content) const
    {
        QFile file(m_Folder.filePath(name));
        if (!file.open(QIODevice::WriteOnly)) qFatal("The file can't be written.");
        file.write(content);
        return file.fileName();
    }

    QTemporaryDir m_Folder;
    QString m_Program;
};
} // namespace

void TestBatchRun::theProcessGetsScriptAndFile()
{
    Batch batch("for word in \"$@\"; do echo \"$word\"; done > words");
    batch.line.files = QStringList{"b c"};
    batch.line.arguments = QStringList{"out", "-x"};
    batch.line.timeLimit = 1500;
    batch.line.pictureFolder = "/pictures";
    QCOMPARE(batch.Run(), 0);
    const QString words = QString::fromUtf8(batch.Read("words"));
    QCOMPARE(words.split('\n', Qt::SkipEmptyParts),
             (QStringList{"--headless", "--script", batch.line.script, "--failure-pictures", "/pictures/b c",
                          "--timeout", "1.5", "--", "b c", "out", "-x"}));
}

void TestBatchRun::processesShareTheMemory()
{
    Batch batch("echo $ZENKARI_SHARERS >> sharers");
    batch.line.jobs = 2;
    QCOMPARE(batch.Run(), 0);
    QCOMPARE(batch.Read("sharers"), QByteArray("2\n2\n2\n"));
    // Never more than run at the same time.
    batch.line.jobs = 8;
    QCOMPARE(batch.Run(), 0);
    QCOMPARE(batch.Read("sharers"), QByteArray("2\n2\n2\n3\n3\n3\n"));
}

void TestBatchRun::aCrashIsAFailure()
{
    Batch batch("kill -SEGV $$");
    QCOMPARE(batch.Run(), 3);
}

void TestBatchRun::aProgramThatDoesNotStartIsAFailureForEachFile()
{
    const Batch batch("");
    QCOMPARE(BatchRun(batch.line, "/no/such/program").Run(), 3);
}

void TestBatchRun::noMoreProcessesRunThanJobs()
{
    // Each one leaves its mark while it runs, and fails when it sees more marks than jobs.
    Batch batch("touch running.$$; test $(ls running.* | wc -l) -le 2; result=$?; sleep 0.1\n"
                "rm running.$$; exit $result");
    batch.line.jobs = 2;
    batch.line.files = QStringList{"a", "b", "c", "d", "e"};
    QCOMPARE(batch.Run(), 0);
}

ZK_REGISTER_TEST(tst_batchrun, TestBatchRun)
#include "tst_batchrun.moc"
