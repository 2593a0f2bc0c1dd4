#pragma once

#include <QColor>
#include <QImage>
#include <QPointF>
#include <QStringList>
#include <QTemporaryDir>

#include <memory>

class DocumentFiles;
class Editor;
class EditorFixture;
class InputDriver;
class LXDocumentInterface;
class LexoUndoStack;
class MainWindow;
class QWidget;
class ZKDocumentView;

/// One tool of a fixture's editor, used with real mouse and key events. Points are scene coordinates,
/// that is document pixels. After every gesture the fixture checks what must always hold.
class ToolDriver
{
public:
    explicit ToolDriver(EditorFixture& editor) : m_Editor(editor) {}

    void Click(const QPointF& scenePos, Qt::MouseButton button = Qt::LeftButton);
    void Drag(const QPointF& from, const QPointF& to, Qt::MouseButton button = Qt::LeftButton);

    /// A press without its release: nothing is checked until the release.
    void Press(const QPointF& scenePos, Qt::MouseButton button = Qt::LeftButton);
    void Release(const QPointF& scenePos, Qt::MouseButton button = Qt::LeftButton);

    void Key(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);

    /// A control of the tool's option bar or panel by its object name; null when it is not shown.
    QWidget* BarControl(const QString& name) const;
    QWidget* PanelControl(const QString& name) const;

private:
    EditorFixture& m_Editor;
};

/// A real editor with the real plug-in in this process, with settings of its own. Main thread only.
class EditorFixture
{
public:
    /// An editor without a document.
    EditorFixture();

    /// An editor with one open document of this size.
    EditorFixture(int width, int height, const QColor& background = Qt::white);

    ~EditorFixture();

    Q_DISABLE_COPY(EditorFixture)

    Editor& GetEditor() { return *m_pEditor; }

    InputDriver& GetInput() { return *m_pInput; }

    MainWindow* Window() const;
    DocumentFiles* Files() const;

    /// The active document with its view and history; null without one.
    LXDocumentInterface* Document() const;
    ZKDocumentView* View() const;
    LexoUndoStack* History() const;

    /// Chooses a tool by its registered name, with its key.
    ToolDriver Tool(const QString& name);

    /// The texts of all commands, oldest first, undone ones included.
    QStringList HistoryTexts() const;

    /// The pixels of a layer, from its own top left; id 0 is the merged picture.
    QImage Pixels(unsigned int layerId = 1) const;

    /// Waits until the document is unlocked, then checks what must always hold. A failure is a failure of
    /// the running test.
    void Settle();

    /// What must always hold between gestures: no lock left, shortcuts on, no override cursor, no open macro.
    void CheckNothingIsLeft() const;

    /// A file name in a folder that goes with the fixture.
    QString TempFile(const QString& name) const;

private:
    QTemporaryDir m_Folder;
    std::unique_ptr<Editor> m_pEditor;
    std::unique_ptr<InputDriver> m_pInput;
};
