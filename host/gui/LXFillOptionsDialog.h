#pragma once

#include "ZKHostExport.h"

#include "guicore/LXDialog.h"

#include <QBrush>

#include <memory>

class LXFillOptionsDialogPrivate;

/// Asks what to fill with and how. The answers are those of the last time it was accepted. Main thread only.
class ZK_HOST_EXPORT LXFillOptionsDialog : public LXDialog
{
    Q_OBJECT

public:
    explicit LXFillOptionsDialog(QWidget* parent = nullptr);
    ~LXFillOptionsDialog() override;

    /// Whether the dialog asks how edges are drawn, which fills of whole rectangles don't have. It does at
    /// first.
    void SetRenderOptionsVisible(bool visible);

    /// In percent, 0 to 100.
    int GetOpacity() const;
    /// A mode of BlendMode.h.
    int GetCompositionMode() const;
    /// Whether edges are smooth; true while it isn't asked.
    bool IsAntialiased() const;

    /// What a layer is filled with: a solid color, or a pattern as a texture.
    QBrush GetContentsBrush() const;
    /// The same for a mask, where the application's colors are grays.
    QBrush GetContentsMaskBrush() const;

public slots:
    void Accept() override;

private:
    std::unique_ptr<LXFillOptionsDialogPrivate> m_pPrivate;
};
