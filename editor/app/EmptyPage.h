#pragma once

#include "EditorExport.h"

#include <QWidget>

class QPushButton;
class QVBoxLayout;
class RecentFiles;

/// What stands in the middle while no document is open: open, new, the recent files, and a place to drop
/// files on. Main thread only.
class ZK_EDITOR_EXPORT EmptyPage : public QWidget
{
    Q_OBJECT

public:
    /// @param recentFiles  outlives the page
    explicit EmptyPage(RecentFiles* recentFiles, QWidget* parent = nullptr);

signals:
    void NewRequested();
    void OpenRequested();
    void FileRequested(const QString& path);

private:
    void RebuildRecentFiles();

    RecentFiles* m_pRecentFiles;
    QVBoxLayout* m_pRecentLayout;
    QWidget* m_pRecentBox;
};
