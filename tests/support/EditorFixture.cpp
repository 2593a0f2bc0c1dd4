#include "support/EditorFixture.h"

#include "app/DocumentFiles.h"
#include "app/Editor.h"
#include "app/MainWindow.h"
#include "document/LXDocumentInterface.h"
#include "document/LXDocumentLayerLockerForRead.h"
#include "document/LXDocumentModel.h"
#include "gui/LXToolWidgetManager.h"
#include "gui/LexoAppKeyHook.h"
#include "gui/ZKDocumentView.h"
#include "history/LexoUndoStack.h"
#include "image/LXImage.h"
#include "image/LXImageConvert.h"
#include "scripting/InputDriver.h"
#include "support/Settle.h"

#include <QApplication>
#include <QMap>
#include <QSignalSpy>
#include <QTest>
#include <QToolBar>

namespace {
constexpr int JobLimit = 20000; // ms
constexpr QSize WindowSize(1280, 800);

/// Records a failure of the running test; the macros of Qt Test would need a void function.
void Require(bool holds, const char* what)
{
    if (!holds) QTest::qFail(what, __FILE__, __LINE__);
}

QWidget* VisibleChild(const QWidget* parent, const QString& name)
{
    if (!parent) return nullptr;
    for (QWidget* child : parent->findChildren<QWidget*>(name)) {
        if (child->isVisible()) return child;
    }
    return nullptr;
}
} // namespace

EditorFixture::EditorFixture()
{
    ApplicationFolders folders = ApplicationFolders::Default();
    folders.config = m_Folder.filePath(QStringLiteral("config"));
    folders.data = m_Folder.filePath(QStringLiteral("data"));
    m_pEditor = std::make_unique<Editor>(folders);
    if (!m_pEditor->Start()) qFatal("The editor did not start: %s", qPrintable(m_pEditor->GetErrorText()));

    Window()->resize(WindowSize);
    Window()->activateWindow();
    if (!QTest::qWaitForWindowActive(Window())) qFatal("The window did not become active.");
    m_pInput = std::make_unique<InputDriver>();
}

EditorFixture::EditorFixture(int width, int height, const QColor& background) : EditorFixture()
{
    if (!Files()->New(QSize(width, height), background)) qFatal("The document was not made.");
}

EditorFixture::~EditorFixture()
{
    m_pInput.reset();
    m_pEditor->Shutdown();
    Require(LexoAppKeyHook::instance()->AreShortcutsEnabled(), "shortcuts stayed off after the shutdown");
    Require(!QGuiApplication::overrideCursor(), "an override cursor stayed after the shutdown");
}

MainWindow* EditorFixture::Window() const
{
    return m_pEditor->GetWindow();
}

DocumentFiles* EditorFixture::Files() const
{
    return m_pEditor->GetFiles();
}

LXDocumentInterface* EditorFixture::Document() const
{
    return Window()->GetActiveDocument();
}

ZKDocumentView* EditorFixture::View() const
{
    return Window()->GetActiveView();
}

LexoUndoStack* EditorFixture::History() const
{
    return View() ? View()->GetHistory() : nullptr;
}

ToolDriver EditorFixture::Tool(const QString& name)
{
    const QMap<QString, int> keys{{QStringLiteral("Fillcan"), Qt::Key_F},
                                  {QStringLiteral("Magic wand"), Qt::Key_W},
                                  {QStringLiteral("Move tool"), Qt::Key_V}};
    Require(keys.contains(name), "no key is known for the tool");
    m_pInput->Key(keys.value(name));
    return ToolDriver(*this);
}

QStringList EditorFixture::HistoryTexts() const
{
    QStringList texts;
    for (int step = 0; step < History()->count(); ++step)
        texts.append(History()->text(step));
    return texts;
}

QImage EditorFixture::Pixels(unsigned int layerId) const
{
    const LXDocumentLayerLockerForRead locker(Document(), layerId);
    QImage pixels;
    ConvertImage(*Document()->GetLayerImage(layerId), pixels);
    return pixels;
}

void EditorFixture::Settle()
{
    LXDocumentInterface* document = Document();
    if (document && document->GetLockState()) {
        QSignalSpy unlocked(document, &LXDocumentInterface::Unlocked);
        Require(unlocked.wait(JobLimit), "the tool's job did not end");
    }
    // What the end of a job has posted, such as a closed dialog's deletion, belongs to the gesture.
    SettleEvents();
    CheckNothingIsLeft();
}

void EditorFixture::CheckNothingIsLeft() const
{
    Require(!Document() || !Document()->GetLockState(), "the document stayed locked");
    Require(LexoAppKeyHook::instance()->AreShortcutsEnabled(), "shortcuts stayed off");
    Require(!QGuiApplication::overrideCursor(), "an override cursor stayed");
    Require(!History() || !History()->isMacroOpen(), "a macro stayed open");
}

QString EditorFixture::TempFile(const QString& name) const
{
    return m_Folder.filePath(name);
}

void ToolDriver::Click(const QPointF& scenePos, Qt::MouseButton button)
{
    m_Editor.GetInput().ClickInScene(m_Editor.View(), scenePos, button);
    m_Editor.Settle();
}

void ToolDriver::Drag(const QPointF& from, const QPointF& to, Qt::MouseButton button)
{
    m_Editor.GetInput().DragInScene(m_Editor.View(), {from, to}, button);
    m_Editor.Settle();
}

void ToolDriver::Press(const QPointF& scenePos, Qt::MouseButton button)
{
    m_Editor.GetInput().PressInScene(m_Editor.View(), scenePos, button);
}

void ToolDriver::Release(const QPointF& scenePos, Qt::MouseButton button)
{
    m_Editor.GetInput().ReleaseInScene(m_Editor.View(), scenePos, button);
    m_Editor.Settle();
}

void ToolDriver::Key(int key, Qt::KeyboardModifiers modifiers)
{
    m_Editor.GetInput().Key(key, modifiers);
    m_Editor.Settle();
}

QWidget* ToolDriver::BarControl(const QString& name) const
{
    return VisibleChild(m_Editor.Window()->findChild<QToolBar*>(QStringLiteral("optionBar")), name);
}

QWidget* ToolDriver::PanelControl(const QString& name) const
{
    return VisibleChild(LXToolWidgetManager::instance(), name);
}
