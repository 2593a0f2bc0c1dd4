#pragma once

#include "core/ZKIBrushTool.h"

#include <QObject>

class ZKDocumentView;

/// The editor's own brush: round, soft or hard, in the application's foreground color. While one lives it is
/// registered as a brush tool, and works on the document in front. Its settings are user values. Main thread
/// only.
class RoundBrush : public QObject, public ZKIBrushTool
{
    Q_OBJECT

public:
    static constexpr int Id = 1;

    explicit RoundBrush(QObject* parent = nullptr);
    ~RoundBrush() override;

    /// Long strokes are painted on a worker, under a dialog that can cancel them. Nothing happens unless
    /// exactly one layer is selected, or while somebody has locked the document; a layer that can't be
    /// painted is told in words.
    void StrokePath(const QPainterPath& path) override;

    QString GetName() const override;
    ZKBrushSettings GetSettings() const override;
    void SetSettings(const ZKBrushSettings& settings) override;

private:
    static bool MayPaint(ZKDocumentView* view);
    /// Returns why it failed, in words; empty when it didn't, or was cancelled.
    static QString Stroke(ZKDocumentView* view, int row, const QPainterPath& path,
                          const ZKBrushSettings& settings);
};
