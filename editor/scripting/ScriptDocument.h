#pragma once

#include "document/LXDocumentInterface.h"
#include "scripting/ScriptObject.h"

#include <QPointer>
#include <QString>
#include <QStringList>

class LexoUndoStack;

/// One open document, as a script holds it. Once the document is closed, everything but `isOpen` fails.
class ScriptDocument : public ScriptObject
{
    Q_OBJECT
    Q_PROPERTY(bool isOpen READ IsOpen)
    Q_PROPERTY(bool isActive READ IsActive)
    Q_PROPERTY(QString name READ GetName)
    /// The file that it was opened from or saved to; empty for none.
    Q_PROPERTY(QString path READ GetPath)
    Q_PROPERTY(int width READ GetWidth)
    Q_PROPERTY(int height READ GetHeight)
    Q_PROPERTY(double dpi READ GetDpi WRITE SetDpi)
    /// Whether a tool or a job holds the document's lock.
    Q_PROPERTY(bool locked READ IsLocked)
    /// How many reasons there are to keep the document, the history apart.
    Q_PROPERTY(int state READ GetState)
    /// Whether closing it would lose something.
    Q_PROPERTY(bool modified READ IsModified)
    /// A list of `{direction, position}`: "horizontal" from the top, "vertical" from the left.
    Q_PROPERTY(QJSValue guides READ GetGuides)
    /// The names of its paths, as the panel lists them.
    Q_PROPERTY(QStringList paths READ GetPaths)
    /// Its color samples: a list of `{x, y, radius, color}`; the color is null outside the canvas.
    Q_PROPERTY(QJSValue samples READ GetSamples)
    /// The names of the selections that it keeps, the oldest first.
    Q_PROPERTY(QStringList savedSelections READ GetSavedSelections)
    /// The name of its color profile; empty for none.
    Q_PROPERTY(QString profile READ GetProfile)

public:
    ScriptDocument(ScriptContext& context, LXDocumentInterface* document);

    LXDocumentInterface* Get() const { return m_pDocument; }

    bool IsOpen() const { return !m_pDocument.isNull(); }

    bool IsActive() const;
    QString GetName() const;
    QString GetPath() const;
    int GetWidth() const;
    int GetHeight() const;
    double GetDpi() const;
    void SetDpi(double dpi);
    bool IsLocked() const;
    int GetState() const;
    bool IsModified() const;
    QJSValue GetGuides() const;
    QStringList GetPaths() const;
    QJSValue GetSamples() const;
    QStringList GetSavedSelections() const;
    QString GetProfile() const;

    /// Brings its window to the front.
    Q_INVOKABLE void activate();
    /// To the path, or to its own file; a format that can't hold all of the picture gets a copy. False when a
    /// question was answered with cancel.
    Q_INVOKABLE bool save(const QString& path = QString());
    /// Writes a flat copy; the document stays what it is. What the format can't hold is left out unasked.
    Q_INVOKABLE void exportAs(const QString& path);
    /// Selects the inside of a rectangle, or nothing; one step of the history.
    Q_INVOKABLE void select(const QJSValue& rect);
    /// A path of straight lines, the last of the list: `contours` is a list of lists of points, a sub path
    /// each, closed where the last point is the first. One step.
    Q_INVOKABLE void addPath(const QString& name, const QJSValue& contours);
    /// Keeps the selection under a name, in place of an older one of that name; one step.
    Q_INVOKABLE void saveSelection(const QString& name);
    /// Brings a kept selection back; one step. The mode is "replace" unless told, "add", "subtract" or
    /// "intersect".
    Q_INVOKABLE void loadSelection(const QString& name, const QString& mode = QString());
    /// One step.
    Q_INVOKABLE void deleteSavedSelection(const QString& name);
    /// Another profile for the same values: a name of `application.profiles`, a file, or "" for none; one
    /// step.
    Q_INVOKABLE void assignProfile(const QString& nameOrFile);
    /// The same colors in another profile; one step. `intent` is "relative" unless told, or "perceptual";
    /// `blackPoint` true unless told.
    Q_INVOKABLE void convertToProfile(const QString& nameOrFile, const QJSValue& options = QJSValue());
    /// As the menu does, with its question. False when somebody refused.
    Q_INVOKABLE bool close();

private:
    LXDocumentInterface* Require() const;
    LXDocumentInterface* RequireFree() const;
    int RequireSavedSelection(const QString& name) const;
    LexoUndoStack* RequireHistory() const;

    QPointer<LXDocumentInterface> m_pDocument;
};
