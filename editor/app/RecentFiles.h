#pragma once

#include <QObject>
#include <QStringList>

/// The files that were opened or saved last, newest first, kept among the user values. Main thread only.
class RecentFiles : public QObject
{
    Q_OBJECT

public:
    static constexpr int MaxCount = 10;

    explicit RecentFiles(QObject* parent = nullptr);

    /// Absolute paths; files that are gone are left out.
    QStringList GetExisting() const;

    /// Moves the file to the front.
    void Add(const QString& path);
    void Remove(const QString& path);
    void Clear();

signals:
    void Changed();

private:
    void Store();

    QStringList m_Paths;
};
