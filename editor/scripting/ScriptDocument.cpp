#include "scripting/ScriptDocument.h"

#include "document/LXColorSampleModel.h"
#include "document/LXDocumentInterface_p.h"
#include "document/LXDocumentSelectionLockerForRead.h"
#include "document/LXPathsListModel.h"
#include "document/SelectionChannels.h"
#include "formats/PictureFile.h"
#include "gui/DocumentOf.h"
#include "gui/LXDocumentManager.h"
#include "gui/LXMdiArea.h"
#include "gui/LXMdiArea_p.h"
#include "gui/LXMdiSubWindow.h"
#include "gui/ZKDocumentView.h"
#include "history/ChannelCommands.h"
#include "history/InsertSubpathCommandData.h"
#include "history/LexoCommand.h"
#include "history/LexoUndoStack.h"
#include "history/PathCommands.h"
#include "history/SelectionCommand.h"
#include "history/SelectionCommandData.h"
#include "history/SubpathCommand.h"
#include "scripting/ScriptArguments.h"
#include "scripting/ScriptHost.h"

#include <QFileInfo>
#include <QPainterPath>

#include <memory>

namespace {
LXMdiSubWindow* WindowOf(const LXDocumentInterface* document)
{
    return LXMdiAreaPrivate::Get(LXDocumentManager::GetDocumentArea())->FindWindow(document);
}

SelectionChannels* ChannelsOf(const LXDocumentInterface* document)
{
    return LXDocumentInterfacePrivate::Get(document)->channels;
}

/// How a saved selection goes with the present one; not told means that it takes its place.
SelectionCommandData::LogicalOp ToOperation(const QString& mode)
{
    if (mode.isEmpty() || mode == QLatin1String("replace")) return SelectionCommandData::Replace;
    if (mode == QLatin1String("add")) return SelectionCommandData::Unite;
    if (mode == QLatin1String("subtract")) return SelectionCommandData::Subtract;
    if (mode == QLatin1String("intersect")) return SelectionCommandData::Intersect;
    throw ScriptError(
        QStringLiteral("A mode is \"replace\", \"add\", \"subtract\" or \"intersect\", not \"%1\".")
            .arg(mode));
}

QList<LXPath> ToContours(const QJSValue& value)
{
    QList<LXPath> contours;
    const int count = value.isArray() ? value.property(QStringLiteral("length")).toInt() : 0;
    for (int i = 0; i < count; ++i) {
        LXPath contour;
        const QVector<QPointF> points = ScriptArguments::ToPoints(value.property(static_cast<quint32>(i)));
        for (const QPointF& point : points)
            contour.append(LXPathElement(point));
        contours.append(contour);
    }
    if (contours.isEmpty()) throw ScriptError(QStringLiteral("A list of lists of points is needed."));
    return contours;
}

LexoCommand* MakeSubPath(LXDocumentInterface* document, int row, int subPath, const LXPath& elements)
{
    auto data = std::make_unique<InsertSubpathCommandData>();
    data->SetPathIndex(row);
    data->SetSubpathIndex(subPath);
    data->SetLogicalOp(LXPathsListModel::Unite);
    data->SetData(elements);
    auto* command = new SubpathCommand(document);
    // A new command takes data of its kind.
    command->SetCommandData(data.release());
    return command;
}

QString Absolute(const QString& path)
{
    return QFileInfo(path).absoluteFilePath();
}
} // namespace

ScriptDocument::ScriptDocument(ScriptContext& context, LXDocumentInterface* document)
    : ScriptObject(context, nullptr), m_pDocument(document)
{}

LXDocumentInterface* ScriptDocument::Require() const
{
    if (!m_pDocument) throw ScriptError(QStringLiteral("The document is closed."));
    return m_pDocument;
}

LXDocumentInterface* ScriptDocument::RequireFree() const
{
    if (Require()->GetLockState()) throw ScriptError(QStringLiteral("The document is being changed."));
    return m_pDocument;
}

bool ScriptDocument::IsActive() const
{
    return Call([this] { return Require() == Context().GetHost().GetActiveDocument(); });
}

QString ScriptDocument::GetName() const
{
    return Call([this] { return Require()->GetDocumentName(); });
}

QString ScriptDocument::GetPath() const
{
    return Call([this] { return Context().GetHost().GetPath(Require()); });
}

int ScriptDocument::GetWidth() const
{
    return Call([this] { return Require()->GetDocumentSize().width(); });
}

int ScriptDocument::GetHeight() const
{
    return Call([this] { return Require()->GetDocumentSize().height(); });
}

double ScriptDocument::GetDpi() const
{
    return Call([this] { return Require()->GetDPI(); });
}

void ScriptDocument::SetDpi(double dpi)
{
    Call([&] {
        if (!(dpi > 0)) throw ScriptError(QStringLiteral("The resolution has to be above 0."));
        Require()->SetDPI(dpi);
    });
}

bool ScriptDocument::IsLocked() const
{
    return Call([this] { return Require()->GetLockState(); });
}

int ScriptDocument::GetState() const
{
    return Call([this] { return Require()->GetDocumentState(); });
}

bool ScriptDocument::IsModified() const
{
    return Call([this] { return ::IsModified(WindowOf(Require())); });
}

QJSValue ScriptDocument::GetGuides() const
{
    return Call([this] {
        QJSEngine& engine = Context().GetEngine();
        const LXGuides guides = Require()->GetGuides();
        QJSValue list = engine.newArray(static_cast<uint>(guides.size()));
        for (int i = 0; i < guides.size(); ++i) {
            const bool isHorizontal = guides[i].orientation == Qt::Horizontal;
            QJSValue guide = engine.newObject();
            guide.setProperty(QStringLiteral("direction"),
                              isHorizontal ? QStringLiteral("horizontal") : QStringLiteral("vertical"));
            guide.setProperty(QStringLiteral("position"), guides[i].position);
            list.setProperty(static_cast<quint32>(i), guide);
        }
        return list;
    });
}

QStringList ScriptDocument::GetPaths() const
{
    return Call([this] {
        const LXPathsListModel* model = Require()->GetPathListModel();
        QStringList names;
        for (int row = 0; row < model->rowCount(); ++row)
            names.append(model->index(row, 0).data(Qt::DisplayRole).toString());
        return names;
    });
}

QJSValue ScriptDocument::GetSamples() const
{
    return Call([this] {
        QJSEngine& engine = Context().GetEngine();
        const LXColorSampleModel* model = Require()->GetColorSamples();
        QJSValue list = engine.newArray(static_cast<uint>(model->rowCount()));
        for (int row = 0; row < model->rowCount(); ++row) {
            const QColor color = model->GetColor(row);
            QJSValue sample = ScriptArguments::OfPoint(engine, model->GetPoint(row));
            sample.setProperty(QStringLiteral("radius"), model->GetSampleRadius(row));
            sample.setProperty(QStringLiteral("color"), color.isValid()
                                                            ? QJSValue(ScriptArguments::OfColor(color))
                                                            : QJSValue(QJSValue::NullValue));
            list.setProperty(static_cast<quint32>(row), sample);
        }
        return list;
    });
}

void ScriptDocument::activate()
{
    Call([this] { LXDocumentManager::GetDocumentArea()->setActiveSubWindow(WindowOf(Require())); });
}

bool ScriptDocument::save(const QString& path)
{
    return Call([&] {
        LXDocumentInterface* document = RequireFree();
        ScriptHost& host = Context().GetHost();
        return path.isEmpty() ? host.Save(document) : host.SaveTo(document, Absolute(path));
    });
}

void ScriptDocument::exportAs(const QString& path)
{
    Call([&] {
        LXDocumentInterface* document = RequireFree();
        const PictureFile::Format format = PictureFile::FormatOfName(path);
        if (!PictureFile::CanWrite(format)) {
            throw ScriptError(QStringLiteral("The ending of \"%1\" names no flat format.").arg(path));
        }
        if (LexoUndoStack* history = ViewOf(WindowOf(document))->GetHistory()) history->commit();
        const PictureFile::Outcome outcome =
            PictureFile::WritePicture(Absolute(path), format, PictureFile::TakePicture(document));
        if (!outcome.IsOk()) throw ScriptError(outcome.message);
    });
}

void ScriptDocument::select(const QJSValue& rect)
{
    Call([&] {
        LXDocumentInterface* document = RequireFree();
        QPainterPath path;
        if (!rect.isNull()) path.addRect(ScriptArguments::ToRect(rect));
        auto data = std::make_unique<SelectionCommandData>();
        data->SetSelectionOp(SelectionCommandData::Replace);
        data->SetSelectionGeometry(path);
        {
            const LXDocumentSelectionLockerForRead locker(document);
            data->SetUndoSel(document->GetSelectionMaskOffset(), document->GetSelectionMask());
        }
        auto command = std::make_unique<SelectionCommand>(document);
        command->setText(tr("Select"));
        if (command->SetCommandData(data.get())) static_cast<void>(data.release());
        RequireHistory()->push(command.release());
    });
}

void ScriptDocument::addPath(const QString& name, const QJSValue& contours)
{
    Call([&] {
        LXDocumentInterface* document = RequireFree();
        const QList<LXPath> subPaths = ToContours(contours);
        LexoUndoStack* history = RequireHistory();
        const int row = document->GetPathListModel()->rowCount();
        LexoCommand* path = PathCommands::Add(document, row, name);
        history->beginMacro(path->text());
        history->push(path);
        for (int i = 0; i < subPaths.size(); ++i)
            history->push(MakeSubPath(document, row, i, subPaths[i]));
        history->endMacro();
    });
}

LexoUndoStack* ScriptDocument::RequireHistory() const
{
    LexoUndoStack* history = ViewOf(WindowOf(Require()))->GetHistory();
    if (!history) throw ScriptError(QStringLiteral("The view has no history."));
    return history;
}

QStringList ScriptDocument::GetSavedSelections() const
{
    return Call([this] { return ChannelsOf(Require())->Names(); });
}

int ScriptDocument::RequireSavedSelection(const QString& name) const
{
    const int row = ChannelsOf(RequireFree())->Find(name);
    if (row < 0) throw ScriptError(QStringLiteral("No selection \"%1\" is saved.").arg(name));
    return row;
}

void ScriptDocument::saveSelection(const QString& name)
{
    Call([&] {
        LXDocumentInterface* document = RequireFree();
        if (name.isEmpty()) throw ScriptError(QStringLiteral("A saved selection needs a name."));
        RequireHistory()->commit();
        LexoCommand* command = ChannelCommands::Save(document, name);
        if (!command) throw ScriptError(QStringLiteral("Nothing is selected."));
        RequireHistory()->push(command);
    });
}

void ScriptDocument::loadSelection(const QString& name, const QString& mode)
{
    Call([&] {
        const int row = RequireSavedSelection(name);
        const SelectionCommandData::LogicalOp operation = ToOperation(mode);
        RequireHistory()->commit();
        RequireHistory()->push(ChannelCommands::Load(Require(), row, operation));
    });
}

void ScriptDocument::deleteSavedSelection(const QString& name)
{
    Call([&] {
        const int row = RequireSavedSelection(name);
        RequireHistory()->push(ChannelCommands::Delete(Require(), row));
    });
}

bool ScriptDocument::close()
{
    return Call([this] { return Context().GetHost().Close(Require()); });
}
