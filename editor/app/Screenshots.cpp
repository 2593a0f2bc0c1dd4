#include "app/Screenshots.h"

#include "app/AboutDialog.h"
#include "app/DocumentFiles.h"
#include "app/Editor.h"
#include "app/GuideDialog.h"
#include "app/JobWait.h"
#include "app/LoadSelectionDialog.h"
#include "app/MainWindow.h"
#include "app/ModifySelectionDialog.h"
#include "app/NewDocumentDialog.h"
#include "app/PanelArea.h"
#include "app/PreferencesDialog.h"
#include "app/ProfileDialog.h"
#include "app/SaveSelectionDialog.h"
#include "app/Tour.h"
#include "app/WidgetGallery.h"
#include "core/ZKApplication.h"
#include "document/LXDocumentInterface.h"
#include "gui/AdjustmentPanel.h"
#include "gui/LXMdiArea_p.h"
#include "gui/LayersWidget.h"
#include "gui/ZKDocumentView.h"
#include "scripting/InputDriver.h"
#include "scripting/QuietEditor.h"

#include <QAbstractItemModel>
#include <QAction>
#include <QBrush>
#include <QDir>
#include <QDockWidget>
#include <QEventLoop>
#include <QFont>
#include <QGuiApplication>
#include <QMenu>
#include <QMenuBar>
#include <QPixmap>
#include <QProcess>
#include <QTemporaryDir>
#include <QThreadPool>
#include <QTimer>
#include <QToolButton>

#include <algorithm>

namespace {
constexpr QSize WindowSize(1280, 800); // whatever the screen
const QColor SkyColor(0xF2, 0xA6, 0x5A);
constexpr const char* ScaleVariable = "QT_SCALE_FACTOR";

/// "&Open Recent…" as a part of a file name: "open-recent".
QString FileNameOf(const QString& text)
{
    QString name;
    for (const QChar& letter : text.toLower()) {
        if (letter.isLetterOrNumber()) name += letter;
        if (letter.isSpace()) name += '-';
    }
    return name;
}

/// Children of the panel by the object names of their forms.
void PressButton(const char* name)
{
    if (auto* button = LayersWidget::GetInstance()->findChild<QToolButton*>(name)) button->click();
}

/// Views make their pictures piece by piece, by turns on workers and by timers.
void WaitUntilStill()
{
    constexpr int mostRounds = 1000; // some samples never come to rest
    int quietRounds = 0;
    for (int round = 0; round < mostRounds && quietRounds < 2; ++round) {
        QThreadPool::globalInstance()->waitForDone();
        QCoreApplication::processEvents();
        quietRounds = QuietEditor::Busy().isEmpty() ? quietRounds + 1 : 0;
    }
}
} // namespace

bool Screenshots::HasOwnScale()
{
    return qEnvironmentVariableIsSet(ScaleVariable);
}

bool Screenshots::RunAtAllScales(const QString& folder)
{
    for (const int scale : {1, 2}) {
        QProcess program;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(ScaleVariable, QString::number(scale));
        program.setProcessEnvironment(environment);
        program.setProcessChannelMode(QProcess::ForwardedChannels);
        const QString scaleFolder = QDir(folder).absoluteFilePath(QStringLiteral("%1x").arg(scale));
        program.start(QCoreApplication::applicationFilePath(),
                      {QStringLiteral("--screenshots"), scaleFolder});
        const bool isDone = program.waitForFinished(-1) && program.exitStatus() == QProcess::NormalExit &&
                            program.exitCode() == 0;
        if (!isDone) return false;
    }
    return true;
}

Screenshots::Screenshots(Editor& editor, const QString& folder)
    : m_Editor(editor), m_BaseFolder(QDir(folder).absolutePath())
{}

bool Screenshots::Run()
{
    const QString resources = ZKApplication::GetResourcePath();
    for (const Theme::Look look : {Theme::Look::Dark, Theme::Look::Light}) {
        Theme::Apply(look, resources);
        if (!TakeInLook(QLatin1String(Theme::Tokens(look).name))) return false;
    }
    return true;
}

bool Screenshots::TakeInLook(const QString& look)
{
    m_Folder = QDir(m_BaseFolder).filePath(look);
    if (!QDir().mkpath(m_Folder)) {
        return Fail(tr("The folder %1 can't be made.").arg(QDir::toNativeSeparators(m_Folder)));
    }
    m_Editor.GetWindow()->resize(WindowSize);
    m_Editor.GetWindow()->GetPanels()->Reset();
    const bool isDone = TakeWindow() && TakeWorkingWindow() && TakeMenus() && TakePanels() &&
                        TakeLayerKinds() && TakeDialogs() && TakeGallery();
    LXMdiAreaPrivate::Get(m_Editor.GetWindow()->GetDocumentArea())->CloseAllUnasked();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return isDone;
}

bool Screenshots::TakeWindow()
{
    MainWindow* window = m_Editor.GetWindow();
    if (!Take(window, QStringLiteral("window-empty"))) return false;

    if (!m_Editor.GetFiles()->Open(Tour::DefaultFile())) return Fail(tr("The sample did not open."));
    return Take(window, QStringLiteral("window-picture"));
}

bool Screenshots::TakeWorkingWindow()
{
    MainWindow* window = m_Editor.GetWindow();
    LXDocumentInterface* document = window->GetActiveDocument();
    InputDriver input;
    ZKApplication::SetForeground(SkyColor);
    input.Key(Qt::Key_F);
    const QSize size = document->GetDocumentSize();
    input.ClickInScene(window->GetActiveView(), QPointF(size.width() * 0.25, size.height() * 0.1));
    if (!WaitUntilUnlocked(document)) return Fail(tr("The fill did not end."));

    for (const char* button : {"m_pAddBtn", "m_pMaskBtn", "m_pUpBtn"})
        PressButton(button);
    input.Key(Qt::Key_A, Qt::ControlModifier);
    input.Key(Qt::Key_Z, Qt::ControlModifier);
    return Take(window, QStringLiteral("window-working"));
}

bool Screenshots::TakeMenus()
{
    return TakeMenusOf(m_Editor.GetWindow()->menuBar()->actions(), QStringLiteral("menu-"));
}

bool Screenshots::TakeMenusOf(const QList<QAction*>& titles, const QString& prefix)
{
    const QPoint corner = m_Editor.GetWindow()->mapToGlobal(QPoint(0, 0));
    for (const QAction* title : titles) {
        if (!title->isVisible() || !title->menu()) continue;
        const QString name = prefix + FileNameOf(title->text());
        title->menu()->popup(corner);
        // Some are filled when they open, and may have found nothing to offer.
        const bool isTaken = title->menu()->isEmpty() || Take(title->menu(), name);
        title->menu()->hide();
        if (!isTaken || !TakeMenusOf(title->menu()->actions(), name + '-')) return false;
    }
    return true;
}

bool Screenshots::TakePanels()
{
    if (!FillClipboard()) return false;
    const QList<QDockWidget*> panels = m_Editor.GetWindow()->GetPanels()->GetPanels();
    for (QDockWidget* panel : panels) {
        panel->raise();
        if (!Take(panel, QStringLiteral("panel-") + FileNameOf(panel->windowTitle()))) return false;
    }
    return true;
}

/// The whole picture as one row, if there is none yet.
bool Screenshots::FillClipboard()
{
    constexpr int limit = 10000; // ms
    const QAbstractItemModel* rows = LayersWidget::GetInstance()->GetClipboardModel();
    if (!rows) return Fail(tr("There is no list of what was copied."));

    if (rows->rowCount() > 0) return true; // of the look before

    QEventLoop loop;
    QObject::connect(rows, &QAbstractItemModel::rowsInserted, &loop, &QEventLoop::quit);
    QTimer::singleShot(limit, &loop, &QEventLoop::quit);
    InputDriver input;
    input.Key(Qt::Key_A, Qt::ControlModifier);
    input.Key(Qt::Key_C, Qt::ControlModifier | Qt::ShiftModifier);
    if (rows->rowCount() == 0) loop.exec();
    input.Key(Qt::Key_Z, Qt::ControlModifier);
    return rows->rowCount() > 0 || Fail(tr("The picture was not copied."));
}

/// A title over the picture with its caret, and each adjustment with its sliders.
bool Screenshots::TakeLayerKinds()
{
    MainWindow* window = m_Editor.GetWindow();
    LXDocumentInterface* document = window->GetActiveDocument();
    const QSize size = document->GetDocumentSize();
    const unsigned int id =
        document->AddTextLayer(tr("Title"), QPointF(size.width() * 0.1, size.height() * 0.3));
    QFont font = window->font();
    font.setPixelSize(size.height() / 6);
    document->SetTextFont(id, font);
    document->SetTextBrush(id, Qt::white);
    document->SetText(id, tr("Evening"));
    document->SetTextStyle(id, 1);
    document->SetTextBend(id, 40);
    document->SetTextCaret(id, 4, true);
    LayersWidget::GetInstance()->parentWidget()->raise();
    if (!Take(window, QStringLiteral("window-text"))) return false;
    document->SetTextCaret(id, 0, false);

    for (const char* name :
         {"addBrightnessContrastAction", "addLevelsAction", "addHueSaturationAction", "addInvertAction"}) {
        auto* action = window->findChild<QAction*>(QLatin1String(name));
        action->trigger();
        const QString file = QStringLiteral("panel-adjustment-") + FileNameOf(action->text());
        if (!Take(window->findChild<AdjustmentPanel*>(), file)) return false;
    }
    return Take(LayersWidget::GetInstance(), QStringLiteral("panel-layers-of-every-kind"));
}

bool Screenshots::TakeDialogs()
{
    MainWindow* window = m_Editor.GetWindow();
    NewDocumentDialog create(window);
    Preferences values = Preferences::Read();
    values.look = Theme::Current();
    PreferencesDialog preferences(values, window);
    AboutDialog about(window);
    GuideDialog guide(window->GetActiveDocument()->GetDocumentSize(), window);
    InputDriver().Key(Qt::Key_A, Qt::ControlModifier);
    ModifySelectionDialog modify(window->GetActiveDocument(), SelectionModify::Kind::Feather, window);
    const QStringList names{tr("Sky"), tr("Trees")};
    SaveSelectionDialog save(names, window);
    LoadSelectionDialog load(names, true, window);
    ProfileDialog assign(ProfileDialog::Purpose::Assign, ZKCMSProfile(), window);
    ProfileDialog convert(ProfileDialog::Purpose::Convert, ZKCMSProfile::SRGB(), window);

    return TakeDialog(create, QStringLiteral("dialog-new")) &&
           TakeDialog(preferences, QStringLiteral("dialog-preferences")) &&
           TakeDialog(about, QStringLiteral("dialog-about")) &&
           TakeDialog(guide, QStringLiteral("dialog-guide")) &&
           TakeDialog(modify, QStringLiteral("dialog-modify-selection")) &&
           TakeDialog(save, QStringLiteral("dialog-save-selection")) &&
           TakeDialog(load, QStringLiteral("dialog-load-selection")) &&
           TakeDialog(assign, QStringLiteral("dialog-assign-profile")) &&
           TakeDialog(convert, QStringLiteral("dialog-convert-to-profile")) && TakeColorRange() &&
           TakeExport();
}

/// It stands beside the picture, whose colors are clicked while it is open.
bool Screenshots::TakeColorRange()
{
    MainWindow* window = m_Editor.GetWindow();
    const QString text = QCoreApplication::translate("ColorRangeSelectPrivate", "Color range");
    for (const QAction* title : window->menuBar()->actions()) {
        if (!title->menu()) continue;
        const QList<QAction*> entries = title->menu()->actions();
        const auto is = [&text](const QAction* entry) { return entry->text() == text; };
        const auto found = std::find_if(entries.begin(), entries.end(), is);
        if (found != entries.end()) (*found)->trigger();
    }
    auto* dialog = window->findChild<QDialog*>(QStringLiteral("SelectColorRangeDlg"));
    if (!dialog) return Fail(tr("The color range did not open."));

    InputDriver input;
    const QSize size = window->GetActiveDocument()->GetDocumentSize();
    for (const QPointF& place : {QPointF(0.1, 0.1), QPointF(0.2, 0.9)}) {
        input.ClickInScene(window->GetActiveView(),
                           QPointF(size.width() * place.x(), size.height() * place.y()));
        // The click's color is made ready for the screen, then what it matches is shown.
        for (int jobs = 0; jobs < 2; ++jobs) {
            QThreadPool::globalInstance()->waitForDone();
            QCoreApplication::processEvents();
        }
    }
    const bool isTaken = Take(dialog, QStringLiteral("dialog-color-range"));
    input.Key(Qt::Key_Escape);
    return isTaken;
}

/// What it asks depends on the picture, so the export itself is started, and cancelled at each dialog.
bool Screenshots::TakeExport()
{
    DocumentFiles* files = m_Editor.GetFiles();
    LXDocumentInterface* document = m_Editor.GetWindow()->GetActiveDocument();
    const QTemporaryDir folder;
    int taken = 0;
    InputDriver input;
    for (const char* name : {"dialog-export", "dialog-export-question"}) {
        input.WhenModalShows<QDialog>([this, &taken, name](QDialog* dialog) {
            if (Take(dialog, QLatin1String(name))) ++taken;
            dialog->reject();
        });
    }
    files->Export(document);
    files->ExportTo(document, folder.filePath(QStringLiteral("lake.jpg")));
    return taken == 2 || Fail(tr("The dialogs of the export could not be taken."));
}

bool Screenshots::TakeGallery()
{
    MainWindow* window = m_Editor.GetWindow();
    for (const WidgetGallery::Sample& sample : WidgetGallery::Samples()) {
        const std::unique_ptr<QWidget> widget = sample.make({window, window->GetActiveDocument()});
        widget->show();
        WaitUntilStill();
        if (!Take(widget.get(), QStringLiteral("widget-") + QLatin1String(sample.name))) return false;
    }
    return true;
}

bool Screenshots::TakeDialog(QDialog& dialog, const QString& name)
{
    dialog.show();
    const bool isTaken = Take(&dialog, name);
    dialog.hide();
    return isTaken;
}

bool Screenshots::Take(QWidget* widget, const QString& name)
{
    QCoreApplication::processEvents();
    const QString file = QDir(m_Folder).filePath(name + QStringLiteral(".png"));
    if (widget->grab().save(file)) return true;
    return Fail(tr("The picture %1 can't be written.").arg(QDir::toNativeSeparators(file)));
}

bool Screenshots::Fail(const QString& text)
{
    m_ErrorText = text;
    return false;
}
