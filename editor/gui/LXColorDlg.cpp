#include "gui/LXColorDlg.h"

#include "ui_LXColorDlg.h"

#include "gui/ColorChoice.h"
#include "gui/RecentColors.h"
#include "guicore/ColorText.h"

#include <QPointer>
#include <QSignalBlocker>
#include <QToolTip>

namespace {
constexpr double Percent = 100;
constexpr double ByteMax = 255;

int ToPercent(double share)
{
    return qRound(Percent * share);
}

/// The last degree of a turn isn't rounded up to the first.
int ToDegrees(double hue)
{
    return qRound(hue) % 360;
}
} // namespace

class LXColorDlgPrivate
{
public:
    explicit LXColorDlgPrivate(LXColorDlg* dialog) : m_pDialog(dialog) {}

    void SetUp();
    void Begin(const QColor& color);
    void ShowAlphaControls();
    /// False after telling the person what is wrong with the text.
    bool IsTextRight();

    QColor GetColor() const { return m_Choice.GetColor(); }

    Ui::LXColorDlg m_Ui;
    bool m_bAlpha = false;

private:
    void ConnectFields();
    /// The choice goes back behind the rounded numbers of what was dragged.
    template <class Dragged>
    void ConnectDrag(const Dragged* dragged);
    void ConnectNumbers();

    void Choose(const QColor& color);
    void ChooseRgb();
    void ChooseHsv(const HsvColor& color);
    void ChooseAlpha(int alpha);
    void ChooseText(const QString& text);

    /// After every change by a person.
    void Changed();
    /// Brings all controls to the choice.
    void Show();
    void ShowNumbers();
    void ShowText();
    QString TextOf(const QColor& color) const;

    LXColorDlg* m_pDialog;
    ColorChoice m_Choice;
    ColorChoice m_BeforeDrag;
};

void LXColorDlgPrivate::SetUp()
{
    m_Ui.setupUi(m_pDialog);
    m_pDialog->layout()->setSizeConstraint(QLayout::SetFixedSize);
    ConnectFields();
    ConnectNumbers();
    ShowAlphaControls();
    Begin(Qt::black);
    m_Ui.m_pField->setFocus();
}

void LXColorDlgPrivate::ConnectFields()
{
    QObject::connect(m_Ui.m_pField, &ColorField::Picked, m_pDialog, [this](double hue, double saturation) {
        ChooseHsv({hue, saturation, m_Choice.GetHsv().value});
    });
    QObject::connect(m_Ui.m_pStrip, &ColorStrip::valueChanged, m_pDialog, [this](int value) {
        ChooseHsv({m_Choice.GetHsv().hue, m_Choice.GetHsv().saturation, value / ByteMax});
    });
    ConnectDrag(m_Ui.m_pField);
    ConnectDrag(m_Ui.m_pStrip);
    QObject::connect(m_Ui.m_pOldWell, &ColorWell::clicked, m_pDialog,
                     [this] { Choose(m_Ui.m_pOldWell->GetColor()); });
    QObject::connect(m_Ui.m_pRecentLst, &RecentColorsView::Picked, m_pDialog,
                     [this](const QColor& color) { Choose(color); });
    QObject::connect(m_Ui.m_pButtons, &QDialogButtonBox::accepted, m_pDialog, &LXColorDlg::Accept);
    QObject::connect(m_Ui.m_pButtons, &QDialogButtonBox::rejected, m_pDialog, &LXColorDlg::Reject);
}

template <class Dragged>
void LXColorDlgPrivate::ConnectDrag(const Dragged* dragged)
{
    QObject::connect(dragged, &Dragged::DragBegan, m_pDialog, [this] { m_BeforeDrag = m_Choice; });
    QObject::connect(dragged, &Dragged::DragCancelled, m_pDialog, [this] {
        m_Choice = m_BeforeDrag;
        Changed();
    });
}

void LXColorDlgPrivate::ConnectNumbers()
{
    const auto changed = qOverload<int>(&QSpinBox::valueChanged);
    for (const QSpinBox* spin : {m_Ui.m_pRedSpn, m_Ui.m_pGreenSpn, m_Ui.m_pBlueSpn})
        QObject::connect(spin, changed, m_pDialog, [this] { ChooseRgb(); });
    // One number is taken as it is shown, the two others as they are behind their rounded numbers.
    QObject::connect(m_Ui.m_pHueSpn, changed, m_pDialog, [this](int hue) {
        ChooseHsv({double(hue), m_Choice.GetHsv().saturation, m_Choice.GetHsv().value});
    });
    QObject::connect(m_Ui.m_pSaturationSpn, changed, m_pDialog, [this](int saturation) {
        ChooseHsv({m_Choice.GetHsv().hue, saturation / Percent, m_Choice.GetHsv().value});
    });
    QObject::connect(m_Ui.m_pValueSpn, changed, m_pDialog, [this](int value) {
        ChooseHsv({m_Choice.GetHsv().hue, m_Choice.GetHsv().saturation, value / Percent});
    });
    QObject::connect(m_Ui.m_pAlphaSpn, changed, m_pDialog, [this](int alpha) { ChooseAlpha(alpha); });
    QObject::connect(m_Ui.m_pAlphaSldr, &QSlider::valueChanged, m_pDialog,
                     [this](int alpha) { ChooseAlpha(alpha); });
    QObject::connect(m_Ui.m_pHexEdt, &QLineEdit::textEdited, m_pDialog,
                     [this](const QString& text) { ChooseText(text); });
    QObject::connect(m_Ui.m_pHexEdt, &QLineEdit::editingFinished, m_pDialog, [this] {
        // Enter finishes too, but then the dialog has yet to judge what was written.
        if (!m_Ui.m_pHexEdt->hasFocus()) ShowText();
    });
}

void LXColorDlgPrivate::Begin(const QColor& color)
{
    QColor first = color.toRgb();
    if (!m_bAlpha) first.setAlpha(int(ByteMax));
    m_Choice.SetColor(first);
    m_Ui.m_pOldWell->SetColor(m_Choice.GetColor());
    Show();
}

void LXColorDlgPrivate::ShowAlphaControls()
{
    for (QWidget* control :
         std::initializer_list<QWidget*>{m_Ui.m_pAlphaLbl, m_Ui.m_pAlphaSldr, m_Ui.m_pAlphaSpn})
        control->setVisible(m_bAlpha);
    // Two that differ in nothing but an alpha would be one color here, and the arrow keys stay at the first.
    const QList<QColor> recent = RecentColors::Read();
    m_Ui.m_pRecentLst->SetColors(m_bAlpha ? recent : RecentColors::Opaque(recent));
    m_Ui.m_pHexEdt->setToolTip(m_bAlpha ? LXColorDlg::tr("The color as #AARRGGBB")
                                        : LXColorDlg::tr("The color as #RRGGBB"));
}

bool LXColorDlgPrivate::IsTextRight()
{
    if (ColorText::Read(m_Ui.m_pHexEdt->text())) return true;
    m_Ui.m_pHexEdt->setFocus();
    m_Ui.m_pHexEdt->selectAll();
    const QString example = TextOf(m_Choice.GetColor());
    const QString message = LXColorDlg::tr("This isn't a color. Write it like %1.").arg(example);
    m_Ui.m_pHexEdt->setAccessibleDescription(message);
    QToolTip::showText(m_Ui.m_pHexEdt->mapToGlobal(QPoint(0, m_Ui.m_pHexEdt->height())), message,
                       m_Ui.m_pHexEdt);
    return false;
}

void LXColorDlgPrivate::Choose(const QColor& color)
{
    QColor wanted = color;
    if (!m_bAlpha) wanted.setAlpha(int(ByteMax));
    m_Choice.SetColor(wanted);
    Changed();
}

void LXColorDlgPrivate::ChooseRgb()
{
    m_Choice.SetColor(QColor(m_Ui.m_pRedSpn->value(), m_Ui.m_pGreenSpn->value(), m_Ui.m_pBlueSpn->value(),
                             m_Choice.GetColor().alpha()));
    Changed();
}

void LXColorDlgPrivate::ChooseHsv(const HsvColor& color)
{
    m_Choice.SetHsv(color);
    Changed();
}

void LXColorDlgPrivate::ChooseAlpha(int alpha)
{
    m_Choice.SetAlpha(alpha);
    Changed();
}

void LXColorDlgPrivate::ChooseText(const QString& text)
{
    if (const std::optional<QColor> color = ColorText::Read(text)) Choose(*color);
}

void LXColorDlgPrivate::Changed()
{
    Show();
    emit m_pDialog->ColorChanged(m_Choice.GetColor());
}

void LXColorDlgPrivate::Show()
{
    const HsvColor& hsv = m_Choice.GetHsv();
    const QColor color = m_Choice.GetColor();
    m_Ui.m_pField->SetHueSaturation(hsv.hue, hsv.saturation);
    const QSignalBlocker blocker(m_Ui.m_pStrip);
    m_Ui.m_pStrip->SetBrightest(ToRgb({hsv.hue, hsv.saturation, 1}));
    m_Ui.m_pStrip->setValue(qRound(ByteMax * hsv.value));
    m_Ui.m_pNewPatch->SetColor(color);
    m_Ui.m_pRecentLst->Mark(color);
    ShowNumbers();
    ShowText();
}

void LXColorDlgPrivate::ShowNumbers()
{
    const HsvColor& hsv = m_Choice.GetHsv();
    const QColor color = m_Choice.GetColor();
    const std::pair<QSpinBox*, int> numbers[] = {
        {m_Ui.m_pRedSpn, color.red()},
        {m_Ui.m_pGreenSpn, color.green()},
        {m_Ui.m_pBlueSpn, color.blue()},
        {m_Ui.m_pHueSpn, ToDegrees(hsv.hue)},
        {m_Ui.m_pSaturationSpn, ToPercent(hsv.saturation)},
        {m_Ui.m_pValueSpn, ToPercent(hsv.value)},
        {m_Ui.m_pAlphaSpn, color.alpha()},
    };
    for (const auto& [spin, number] : numbers) {
        const QSignalBlocker blocker(spin);
        spin->setValue(number);
    }
    const QSignalBlocker blocker(m_Ui.m_pAlphaSldr);
    m_Ui.m_pAlphaSldr->setValue(color.alpha());
}

void LXColorDlgPrivate::ShowText()
{
    const QColor color = m_Choice.GetColor();
    // What a person is writing stays as it is written as long as it means the color.
    const std::optional<QColor> written = ColorText::Read(m_Ui.m_pHexEdt->text());
    const bool isSame =
        written && (m_bAlpha ? written->rgba() == color.rgba() : written->rgb() == color.rgb());
    if (isSame && m_Ui.m_pHexEdt->hasFocus()) return;
    m_Ui.m_pHexEdt->setText(TextOf(color));
    m_Ui.m_pHexEdt->setAccessibleDescription(QString());
}

QString LXColorDlgPrivate::TextOf(const QColor& color) const
{
    return m_bAlpha ? ColorText::WithAlpha(color) : ColorText::Opaque(color);
}

LXColorDlg::LXColorDlg(QWidget* parent)
    : LXDialog(parent), m_pPrivate(std::make_unique<LXColorDlgPrivate>(this))
{
    m_pPrivate->SetUp();
}

LXColorDlg::~LXColorDlg()
{
    // A text that loses its focus by that tells so, to what is still there now.
    hide();
}

void LXColorDlg::SetColor(const QColor& color)
{
    if (color.isValid()) m_pPrivate->Begin(color);
}

QColor LXColorDlg::GetColor() const
{
    return m_pPrivate->GetColor();
}

void LXColorDlg::SetAlphaEnabled(bool enabled)
{
    m_pPrivate->m_bAlpha = enabled;
    m_pPrivate->ShowAlphaControls();
    m_pPrivate->Begin(m_pPrivate->GetColor());
}

bool LXColorDlg::IsAlphaEnabled() const
{
    return m_pPrivate->m_bAlpha;
}

QColor LXColorDlg::Choose(QWidget* parent, const QString& title, const QColor& color, Channels channels)
{
    // Not on the stack, where a parent that goes would delete it.
    const QPointer<LXColorDlg> dialog = new LXColorDlg(parent);
    dialog->setWindowTitle(title);
    dialog->SetAlphaEnabled(channels == Channels::ColorAndAlpha);
    dialog->SetColor(color);
    const bool isAccepted = dialog->Exec() == 1;
    if (!dialog) return QColor();
    QColor chosen = isAccepted ? dialog->GetColor() : QColor();
    delete dialog;
    return chosen;
}

void LXColorDlg::Accept()
{
    if (!m_pPrivate->IsTextRight()) return;
    RecentColors::Add(GetColor());
    LXDialog::Accept();
}
