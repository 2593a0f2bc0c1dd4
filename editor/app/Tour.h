#pragma once

#include "EditorExport.h"

#include <QCoreApplication>
#include <QImage>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>

class Editor;
class InputDriver;
class LXDocumentInterface;
class LexoUndoStack;
class QWidget;
class ZKDocumentView;

/// A walk through the editor with real mouse and key events on a photo. After each step the step is checked
/// and the window is kept as a picture, so that anyone can see what the editor does. Main thread only.
class ZK_EDITOR_EXPORT Tour
{
    Q_DECLARE_TR_FUNCTIONS(Tour)

public:
    /// The photo that comes with the program.
    static QString DefaultFile();

    /// @param editor  started, without a document
    /// @param folder  where the pictures go; made when it is missing
    Tour(Editor& editor, const QString& folder);
    ~Tour();

    /// Walks all steps; ends at the first one that did not do what it should, and then answers false.
    bool Run(const QString& file);

    /// One line for each step that was walked, and for the one that failed why.
    QString GetReport() const { return m_Report.join('\n'); }

private:
    bool Step(const QString& name, const std::function<QString()>& walk);
    QString OpenPhoto(const QString& file);
    QString ChooseFillCan();
    QString Fill();
    QString Undo();
    QString RedoSaveAndReopen();

    QWidget* OptionControl(const QString& name) const;
    QImage MergedPicture() const;
    ZKDocumentView* View() const;
    LXDocumentInterface* Document() const;
    LexoUndoStack* History() const;

    Editor& m_Editor;
    QString m_Folder;
    QStringList m_Report;
    std::unique_ptr<InputDriver> m_pInput;
    QImage m_Before;
    QImage m_Filled;
};
