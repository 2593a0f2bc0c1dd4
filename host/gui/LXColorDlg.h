#pragma once

#include "guicore/LXDialog.h"

#include <QColor>

#include <memory>

class LXColorDlgPrivate;

/// Asks for a color: a field of hues and saturations, a strip of values, the numbers of both models and the
/// color as text, all of which follow each other; the old color beside the new one; the colors that were
/// chosen last. Enter accepts, Escape rejects. Main thread only.
///
/// Colors are the program's own, whatever the screen: what is shown is converted to it, what is chosen isn't.
class ZK_HOST_EXPORT LXColorDlg : public LXDialog
{
    Q_OBJECT

public:
    explicit LXColorDlg(QWidget* parent = nullptr);
    ~LXColorDlg() override;

    /// The color to begin with, which also is the old one. Black at first; an invalid color is ignored.
    void SetColor(const QColor& color);

    /// The chosen color, of the model RGB; valid also before and after the dialog is shown.
    QColor GetColor() const;

    /// Whether a person may choose the alpha. When not, which is so at first, the color is opaque.
    void SetAlphaEnabled(bool enabled);
    bool IsAlphaEnabled() const;

    enum class Channels
    {
        Color,
        ColorAndAlpha,
    };

    /// Asks with a dialog of this title, and gives the color or, when rejected, an invalid one. So it does
    /// when the parent goes while the dialog is open.
    static QColor Choose(QWidget* parent, const QString& title, const QColor& color,
                         Channels channels = Channels::Color);

public slots:
    /// Stays open, and says so, while the text isn't a color. Keeps the color among the recent ones.
    void Accept() override;

signals:
    /// While a person chooses, for a preview.
    void ColorChanged(const QColor& color);

private:
    std::unique_ptr<LXColorDlgPrivate> m_pPrivate;
};
