#pragma once

#include "ZKHostExport.h"

#include <QColor>
#include <QToolButton>

#include <memory>

class LXColorButtonPrivate;

/// A button that shows a color, over a checker when it is translucent. A press asks for another one with
/// LXColorDlg. Main thread only.
class ZK_HOST_EXPORT LXColorButton : public QToolButton
{
    Q_OBJECT

public:
    explicit LXColorButton(QWidget* parent = nullptr);
    ~LXColorButton() override;

    /// Opaque black at first. Setting the present color again does nothing; an invalid one is ignored.
    QColor GetColor() const;
    void SetColor(const QColor& color);

    /// The title of the dialog; "Select a color" unless told.
    void SetDialogTitle(const QString& title);

    /// Whether a press opens the dialog, which is so at first. Who asks for the color in another way turns it
    /// off and listens to `clicked()`.
    void SetDialogEnabled(bool enabled);

    /// Whether the dialog lets a person choose the alpha; not at first.
    void SetAlphaEnabled(bool enabled);

    QSize sizeHint() const override;

signals:
    /// After every change, whoever made it.
    void ColorChanged(const QColor& color);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void Ask();

    std::unique_ptr<LXColorButtonPrivate> m_pPrivate;
};
