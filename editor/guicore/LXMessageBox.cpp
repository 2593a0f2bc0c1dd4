#include "guicore/LXMessageBox.h"

#include "utils/ZKIconHelper.h"

#include <QApplication>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QThread>

#include <map>

class LXMessageBoxPrivate
{
public:
    LXMessageBox::Icon m_Icon = LXMessageBox::NoIcon;
    QLabel* m_pIconLbl = nullptr;
    QLabel* m_pTextLbl = nullptr;
    QHBoxLayout* m_pButtonLayout = nullptr;
    std::map<QPushButton*, LXMessageBox::Button> m_Buttons; // NoButton: has words of its own
    QPushButton* m_pClicked = nullptr;
};

namespace {
/// In the order in which the static boxes show them.
constexpr LXMessageBox::Button StockButtons[] = {
    LXMessageBox::Yes,     LXMessageBox::No,     LXMessageBox::Save, LXMessageBox::Ok,
    LXMessageBox::Discard, LXMessageBox::Cancel, LXMessageBox::Close};

QString StockText(LXMessageBox::Button button)
{
    switch (button) {
    case LXMessageBox::NoButton: break;
    case LXMessageBox::Yes: return LXMessageBox::tr("&Yes");
    case LXMessageBox::No: return LXMessageBox::tr("&No");
    case LXMessageBox::Save: return LXMessageBox::tr("&Save");
    case LXMessageBox::Discard: return LXMessageBox::tr("&Discard");
    case LXMessageBox::Cancel: return LXMessageBox::tr("Cancel");
    case LXMessageBox::Ok: return LXMessageBox::tr("OK");
    case LXMessageBox::Close: return LXMessageBox::tr("Close");
    }
    return QString();
}

QPixmap IconPicture(LXMessageBox::Icon icon, const QWidget& widget)
{
    constexpr int size = 40;
    constexpr const char* names[] = {"", "information", "warning", "critical"};
    if (icon == LXMessageBox::NoIcon) return QPixmap();
    const QIcon picture = ZKIconHelper::DisabledIcon(QString("theme:message_%1.png").arg(names[icon]));
    return picture.pixmap(widget.windowHandle(), {size, size});
}

LXMessageBox::Button Ask(LXMessageBox::Icon icon, QWidget* parent, const QString& title, const QString& text,
                         LXMessageBox::Buttons buttons, LXMessageBox::Button defaultButton)
{
    // On the heap: the parent takes its box along when it goes while the question stands.
    const QPointer<LXMessageBox> box(new LXMessageBox(parent));
    box->SetIcon(icon);
    box->SetWindowTitle(title);
    box->SetText(text);
    for (const LXMessageBox::Button stock : StockButtons) {
        if (!buttons.testFlag(stock)) continue;
        QPushButton* button = box->AddButton(stock);
        if (stock == defaultButton) box->SetDefaultButton(button);
    }
    const LXMessageBox::Button answer = box->Exec();
    delete box;
    return answer;
}
} // namespace

LXMessageBox::Button LXMessageBox::Information(QWidget* parent, const QString& title, const QString& text,
                                               Buttons buttons, Button defaultButton)
{
    return Ask(InformationIcon, parent, title, text, buttons, defaultButton);
}

LXMessageBox::Button LXMessageBox::Warning(QWidget* parent, const QString& title, const QString& text,
                                           Buttons buttons, Button defaultButton)
{
    return Ask(WarningIcon, parent, title, text, buttons, defaultButton);
}

LXMessageBox::Button LXMessageBox::Critical(QWidget* parent, const QString& title, const QString& text,
                                            Buttons buttons, Button defaultButton)
{
    return Ask(CriticalIcon, parent, title, text, buttons, defaultButton);
}

LXMessageBox::LXMessageBox(QWidget* parent)
    : QDialog(parent,
              Qt::Dialog | Qt::WindowTitleHint | Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint),
      m_pPrivate(std::make_unique<LXMessageBoxPrivate>())
{
    Q_ASSERT_X(QThread::currentThread() == qApp->thread(), "LXMessageBox", "only on the main thread");

    m_pPrivate->m_pIconLbl = new QLabel(this);
    m_pPrivate->m_pIconLbl->hide();
    m_pPrivate->m_pTextLbl = new QLabel(this);
    m_pPrivate->m_pTextLbl->setTextFormat(Qt::PlainText);
    m_pPrivate->m_pTextLbl->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_pPrivate->m_pTextLbl->setWordWrap(true);

    m_pPrivate->m_pButtonLayout = new QHBoxLayout;
    m_pPrivate->m_pButtonLayout->setSpacing(8);
    m_pPrivate->m_pButtonLayout->addStretch(1);

    auto* layout = new QGridLayout(this);
    layout->setContentsMargins(16, 16, 16, 16);
    layout->setHorizontalSpacing(16);
    layout->setVerticalSpacing(16);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    layout->setColumnStretch(1, 1);
    layout->addWidget(m_pPrivate->m_pIconLbl, 0, 0, Qt::AlignTop);
    layout->addWidget(m_pPrivate->m_pTextLbl, 0, 1, Qt::AlignVCenter);
    layout->addLayout(m_pPrivate->m_pButtonLayout, 1, 0, 1, 2);
}

LXMessageBox::~LXMessageBox() = default;

void LXMessageBox::SetWindowTitle(const QString& title)
{
    setWindowTitle(title);
}

void LXMessageBox::SetText(const QString& text)
{
    // A label that wraps its words would else choose a column narrower than the lines that it was given.
    constexpr int widest = 480;
    const int natural = m_pPrivate->m_pTextLbl->fontMetrics().size(0, text).width();
    m_pPrivate->m_pTextLbl->setMinimumWidth(qMin(natural, widest));
    m_pPrivate->m_pTextLbl->setText(text);
    // Screen readers announce a dialog by its description.
    setAccessibleDescription(text);
}

QString LXMessageBox::GetText() const
{
    return m_pPrivate->m_pTextLbl->text();
}

void LXMessageBox::SetIcon(Icon icon)
{
    m_pPrivate->m_Icon = icon;
    const QPixmap picture = IconPicture(icon, *this);
    m_pPrivate->m_pIconLbl->setPixmap(picture);
    m_pPrivate->m_pIconLbl->setVisible(!picture.isNull());
}

LXMessageBox::Icon LXMessageBox::GetIcon() const
{
    return m_pPrivate->m_Icon;
}

QPushButton* LXMessageBox::AddButton(const QString& text)
{
    auto* button = new QPushButton(text, this);
    m_pPrivate->m_pButtonLayout->addWidget(button);
    m_pPrivate->m_Buttons.emplace(button, NoButton);
    connect(button, &QPushButton::clicked, this, [this, button] {
        m_pPrivate->m_pClicked = button;
        accept();
    });
    return button;
}

QPushButton* LXMessageBox::AddButton(Button button)
{
    QPushButton* added = AddButton(StockText(button));
    m_pPrivate->m_Buttons[added] = button;
    return added;
}

void LXMessageBox::SetDefaultButton(QPushButton* button)
{
    if (button == nullptr) return;
    button->setDefault(true);
    button->setFocus();
}

LXMessageBox::Button LXMessageBox::Exec()
{
    if (m_pPrivate->m_Buttons.empty()) AddButton(Close);
    m_pPrivate->m_pClicked = nullptr;
    const QPointer<LXMessageBox> self(this);
    exec();
    if (!self) return NoButton;
    return m_pPrivate->m_pClicked == nullptr ? NoButton : m_pPrivate->m_Buttons[m_pPrivate->m_pClicked];
}

QPushButton* LXMessageBox::ClickedButton() const
{
    return m_pPrivate->m_pClicked;
}
