#include "app/Tour.h"

#include "app/DocumentFiles.h"
#include "app/Editor.h"
#include "app/JobWait.h"
#include "app/MainWindow.h"
#include "core/ZKApplication.h"
#include "core/ZKToolGroupManager.h"
#include "document/LXDocumentInterface.h"
#include "document/LXDocumentLayerLockerForRead.h"
#include "document/LXDocumentModel.h"
#include "gui/ZKDocumentView.h"
#include "history/LexoUndoStack.h"
#include "image/LXImage.h"
#include "image/LXImageConvert.h"
#include "scripting/InputDriver.h"

#include <QAbstractSlider>
#include <QCheckBox>
#include <QDir>
#include <QFileInfo>
#include <QPixmap>
#include <QSpinBox>

namespace {
constexpr QSize WindowSize(1280, 800); // whatever the screen
constexpr int TourTolerance = 36;
const QColor TourColor(0xF2, 0xA6, 0x5A); // an evening sky

/// In the sky of the sample: a quarter from the left, a tenth from the top.
QPointF PointToFill(const QSize& size)
{
    return {size.width() * 0.25, size.height() * 0.1};
}
} // namespace

QString Tour::DefaultFile()
{
    return QDir(ZKApplication::GetResourcePath()).filePath(QStringLiteral("samples/lake.jpg"));
}

Tour::Tour(Editor& editor, const QString& folder)
    : m_Editor(editor), m_Folder(QDir(folder).absolutePath()), m_pInput(std::make_unique<InputDriver>())
{
    m_Editor.GetWindow()->resize(WindowSize);
}

Tour::~Tour() = default;

bool Tour::Run(const QString& file)
{
    if (!QDir().mkpath(m_Folder)) {
        m_Report.append(tr("FAILED: the folder %1 can't be made").arg(QDir::toNativeSeparators(m_Folder)));
        return false;
    }
    const bool isDone = Step(QStringLiteral("01-opened"), [&] { return OpenPhoto(file); }) &&
                        Step(QStringLiteral("02-tool-chosen"), [&] { return ChooseFillCan(); }) &&
                        Step(QStringLiteral("03-filled"), [&] { return Fill(); }) &&
                        Step(QStringLiteral("04-undone"), [&] { return Undo(); }) &&
                        Step(QStringLiteral("05-saved-and-reopened"), [&] { return RedoSaveAndReopen(); });
    if (isDone) m_Report.append(tr("The pictures are in %1").arg(QDir::toNativeSeparators(m_Folder)));
    return isDone;
}

bool Tour::Step(const QString& name, const std::function<QString()>& walk)
{
    QString failure = walk();
    QCoreApplication::processEvents();

    const QString picture = QDir(m_Folder).filePath(name + QStringLiteral(".png"));
    if (!m_Editor.GetWindow()->grab().save(picture) && failure.isEmpty()) {
        failure = tr("the picture %1 can't be written").arg(QDir::toNativeSeparators(picture));
    }
    m_Report.append(failure.isEmpty() ? tr("%1: done").arg(name) : tr("%1: FAILED: %2").arg(name, failure));
    return failure.isEmpty();
}

QString Tour::OpenPhoto(const QString& file)
{
    if (!QFileInfo(file).isFile()) return tr("there is no file %1").arg(QDir::toNativeSeparators(file));
    if (!m_Editor.GetFiles()->Open(file)) return tr("the photo did not open");
    if (!View()) return tr("the photo opened without a view");

    m_Before = MergedPicture();
    return m_Before.isNull() ? tr("the photo has no pixels") : QString();
}

QString Tour::ChooseFillCan()
{
    ZKApplication::SetForeground(TourColor);
    m_pInput->Key(Qt::Key_F);
    if (!ZKToolGroupManager::GetExplicitAction()) return tr("the key F chose no tool");

    auto* tolerance = qobject_cast<QSpinBox*>(OptionControl(QStringLiteral("m_pToleranceSpn")));
    auto* contiguous = qobject_cast<QCheckBox*>(OptionControl(QStringLiteral("m_pContiguousChb")));
    if (!tolerance || !contiguous) return tr("the option bar of the fill can is not there");

    m_pInput->Click(tolerance, tolerance->rect().center() - QPoint(tolerance->width() / 4, 0));
    m_pInput->Key(Qt::Key_A, Qt::ControlModifier);
    m_pInput->Type(QString::number(TourTolerance));
    m_pInput->Key(Qt::Key_Return);
    if (tolerance->value() != TourTolerance)
        return tr("typing set the tolerance to %1").arg(tolerance->value());

    m_pInput->Click(contiguous, QPoint(8, contiguous->height() / 2));
    if (!contiguous->isChecked()) return tr("a click did not check \"Contiguous\"");
    return QString();
}

QString Tour::Fill()
{
    m_pInput->ClickInScene(View(), PointToFill(Document()->GetDocumentSize()));
    if (!WaitUntilUnlocked(Document())) return tr("the fill did not end");

    m_Filled = MergedPicture();
    if (m_Filled == m_Before) return tr("the click changed no pixel");
    if (History()->undoText() != QLatin1String("Fill")) {
        return tr("the history says \"%1\"").arg(History()->undoText());
    }
    return QString();
}

QString Tour::Undo()
{
    m_pInput->Key(Qt::Key_Z, Qt::ControlModifier);
    return MergedPicture() == m_Before ? QString() : tr("undo did not bring the photo back");
}

QString Tour::RedoSaveAndReopen()
{
    m_pInput->Key(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
    if (MergedPicture() != m_Filled) return tr("redo did not bring the fill back");

    const QString copy = QDir(m_Folder).filePath(QStringLiteral("filled.png"));
    if (!m_Editor.GetFiles()->SaveTo(Document(), copy)) return tr("the copy was not saved");
    m_pInput->Key(Qt::Key_W, Qt::ControlModifier);
    if (View()) return tr("Ctrl+W did not close the saved photo");

    if (!m_Editor.GetFiles()->Open(copy)) return tr("the copy did not open");
    return MergedPicture() == m_Filled ? QString() : tr("the copy differs from what was saved");
}

QWidget* Tour::OptionControl(const QString& name) const
{
    for (QWidget* control : m_Editor.GetWindow()->findChildren<QWidget*>(name)) {
        if (control->isVisible()) return control;
    }
    return nullptr;
}

QImage Tour::MergedPicture() const
{
    const LXDocumentInterface* document = Document();
    if (!document) return QImage();

    const LXDocumentLayerLockerForRead locker(document, 0);
    QImage picture;
    ConvertImage(*document->GetLayerImage(0), picture);
    return picture;
}

ZKDocumentView* Tour::View() const
{
    return m_Editor.GetWindow()->GetActiveView();
}

LXDocumentInterface* Tour::Document() const
{
    return m_Editor.GetWindow()->GetActiveDocument();
}

LexoUndoStack* Tour::History() const
{
    return View() ? View()->GetHistory() : nullptr;
}
