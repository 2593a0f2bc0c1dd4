#pragma once

#include "app/Editor.h"

#include <QColor>
#include <QImage>
#include <QPointF>
#include <QStringList>
#include <QTemporaryDir>

class EditorFixture;
class InputDriver;
class LXDocumentInterface;
class LexoUndoStack;
class ZKDocumentView;

/// One tool of a fixture's editor, used with real mouse and key events. Points are scene coordinates,
/// that is document pixels. After every gesture the fixture checks what must always hold.
class ToolDriver
{
public:
    ToolDriver(EditorFixture& editor, const QString& name);

    void Click(const QPointF& scenePos, Qt::MouseButton button = Qt::LeftButton);
    void Drag(const QPointF& from, const QPointF& to, Qt::MouseButton button = Qt::LeftButton);

    /// A press without its release: nothing is checked until the release.
    void Press(const QPointF& scenePos, Qt::MouseButton button = Qt::LeftButton);
    void Release(const QPointF& scenePos, Qt::MouseButton button = Qt::LeftButton);

    void Key(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);

private:
    EditorFixture& m_Editor;
};

/// A real editor with the real plug-in in this process, an own settings file and a small document.
class EditorFixture
{
public:
    /// An editor with one open document of this size.
    EditorFixture(int width, int height, const QColor& background = Qt::white);

    /// An editor without a document.
    EditorFixture();

    ~EditorFixture();

    Q_DISABLE_COPY(EditorFixture)

    Editor& GetEditor() { return *m_pEditor; }

    InputDriver& GetInput() { return *m_pInput; }

    /// The active document with its view and history; null without one.
    LXDocumentInterface* Document() const;
    ZKDocumentView* View() const;
    LexoUndoStack* History() const;

    /// Chooses a tool by its registered name, with its key.
    ToolDriver Tool(const QString& name);

    /// The texts of all commands, oldest first, undone ones included.
    QStringList HistoryTexts() const;

    /// The whole layer, without its offset; id 0 is the merged picture.
    QImage Pixels(unsigned int layerId = 1) const;

    /// The point in the viewport that shows this document point.
    QPoint ViewPoint(const QPointF& scenePos) const;

    /// Waits until the document is unlocked, then checks what must always hold: no lock left, shortcuts
    /// on, no override cursor, no open macro. A failure is a failure of the running test.
    void Settle();

    /// A file name in a folder that goes with the fixture.
    QString TempFile(const QString& name) const;

private:
    QTemporaryDir m_Folder;
    std::unique_ptr<Editor> m_pEditor;
    std::unique_ptr<InputDriver> m_pInput;
};
