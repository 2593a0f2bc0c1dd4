#pragma once

#include "ZKHostExport.h"

#include <QBrush>
#include <QColor>
#include <QObject>
#include <QString>
#include <QVariant>

#include <memory>

class QAction;
class ZKApplicationPrivate;

/// What belongs to the program and not to a document: the person's values, the two colors, the
/// gradient, the patterns and the folders. One instance, made at first use. Main thread only.
class ZK_HOST_EXPORT ZKApplication : public QObject
{
    Q_OBJECT

public:
    static ZKApplication* GetInstance();
    ~ZKApplication() override;

    /// A value of the person's settings, or `def` when it was never written.
    /// @param key  a tool's name and a value's name, joined by a slash: "FillCanTool/Active".
    /// The result has the type of `def` when it converts to it.
    static QVariant GetUserValue(const QString& key, const QVariant& def);

    /// Keeps the value beyond the end of the program; the next GetUserValue() sees it.
    static void SetUserValue(const QString& key, const QVariant& value);

    /// The color that tools paint with; opaque black at first. An invalid color is ignored by the setters.
    static QColor GetForeground();
    static void SetForeground(const QColor& color);

    /// The second color; opaque white at first.
    static QColor GetBackground();
    static void SetBackground(const QColor& color);

    /// The two colors as a mask takes them: opaque grays of their lightness. White reveals, black hides.
    static QColor GetMaskForeground();
    static QColor GetMaskBackground();

    /// The gradient that things are filled with; no brush at first.
    static QBrush GetGradient();
    static void SetGradient(const QBrush& gradient);

    /// The patterns that textures are filled with.
    static int GetPatternCount();

    /// @param index  from 0 to GetPatternCount() - 1; any other gives an empty string.
    /// Returns the absolute path of the picture, with the separators of the system.
    static QString GetPatternFile(int index);

    /// Which pattern is chosen; 0 at first. Setting an index that does not exist does nothing.
    static int GetTexturePatternIndex();
    static void SetTexturePatternIndex(int index);

    /// The folder for data that the program writes. It exists; no trailing slash.
    static QString GetUserDataFolder();

    /// The folder of the files that came with the program; no trailing slash.
    static QString GetResourcePath();

    /// The action that opens the dialog for refining a selection; null while nobody has registered one, and
    /// again after it is destroyed.
    QAction* GetRefineSelection() const;
    /// Registers the action and tells everybody; null takes it away. The action keeps its owner.
    void RegisterRefineSelection(QAction* action);

signals:
    /// After a change; setting the present color again sends nothing.
    void ForegroundChanged(const QColor& color);
    void BackgroundChanged(const QColor& color);
    void TexturePatternIndexChanged(int index);
    void GradientChanged(const QBrush& gradient);
    /// Null when the action was taken away.
    void RefineSelectionRegistered(QAction* action);

private:
    friend class ZKApplicationPrivate;

    ZKApplication();

    std::unique_ptr<ZKApplicationPrivate> m_pPrivate;
};
