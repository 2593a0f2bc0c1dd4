#include "scripting/ScriptDocuments.h"

#include "document/LXDocumentInterface.h"
#include "gui/LXDocumentManager.h"
#include "scripting/ScriptArguments.h"
#include "scripting/ScriptDocument.h"
#include "scripting/ScriptHost.h"

#include <QFileInfo>
#include <QSize>

ScriptDocuments::ScriptDocuments(ScriptContext& context, QObject* parent) : ScriptObject(context, parent) {}

QJSValue ScriptDocuments::HandDocument(LXDocumentInterface* document) const
{
    if (!document) return QJSValue(QJSValue::NullValue);
    return Hand(new ScriptDocument(Context(), document));
}

QJSValue ScriptDocuments::GetActive() const
{
    return HandDocument(Context().GetHost().GetActiveDocument());
}

QJSValue ScriptDocuments::GetAll() const
{
    const QList<LXDocumentInterface*> documents = LXDocumentManager::Instance()->GetDocuments();
    QJSValue all = Context().GetEngine().newArray(static_cast<uint>(documents.size()));
    for (int i = 0; i < documents.size(); ++i)
        all.setProperty(static_cast<quint32>(i), HandDocument(documents[i]));
    return all;
}

int ScriptDocuments::GetCount() const
{
    return LXDocumentManager::Instance()->GetDocuments().size();
}

QJSValue ScriptDocuments::open(const QString& path)
{
    return Call([&] {
        const QFileInfo file(path);
        if (!file.isFile()) throw ScriptError(QStringLiteral("There is no file \"%1\".").arg(path));
        LXDocumentInterface* document = Context().GetHost().Open(file.absoluteFilePath());
        if (!document) throw ScriptError(QStringLiteral("\"%1\" was not opened.").arg(path));
        return HandDocument(document);
    });
}

QJSValue ScriptDocuments::create(const QJSValue& width, const QJSValue& height, const QJSValue& options)
{
    return Call([&] {
        constexpr const char* dpiName = "dpi";
        constexpr const char* backgroundName = "background";
        ScriptArguments::CheckOptions(options, {dpiName, backgroundName});
        const QSize size(
            ScriptArguments::ToInteger(width, "width", 1, LXDocumentInterface::MAX_DOC_DIMENSION),
            ScriptArguments::ToInteger(height, "height", 1, LXDocumentInterface::MAX_DOC_DIMENSION));
        const QJSValue background = ScriptArguments::Option(options, backgroundName);
        const QColor color =
            background.isUndefined() ? QColor(Qt::white) : ScriptArguments::ToColor(background.toString());
        const QJSValue dpi = ScriptArguments::Option(options, dpiName);
        const double wantedDpi = dpi.isUndefined() ? 0 : ScriptArguments::ToNumber(dpi, dpiName);
        if (wantedDpi < 0) throw ScriptError(QStringLiteral("The resolution has to be above 0."));

        LXDocumentInterface* document = Context().GetHost().New(size, color);
        if (!document) throw ScriptError(QStringLiteral("The document was not made."));
        document->SetDPI(wantedDpi); // ignored unless above 0
        return HandDocument(document);
    });
}
