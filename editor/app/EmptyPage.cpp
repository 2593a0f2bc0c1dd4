#include "app/EmptyPage.h"

#include "app/RecentFiles.h"
#include "utils/ZKIconHelper.h"

#include <QDir>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace {
constexpr int FileNameWidth = 320;
constexpr int ShownRecentFiles = 6;

QLabel* MakeLabel(const QString& text, const QString& name)
{
    auto* label = new QLabel(text);
    label->setObjectName(name);
    return label;
}

/// A button for a file: its name, with the whole path in the tool tip.
QPushButton* MakeFileButton(const QString& path)
{
    auto* button = new QPushButton;
    const QString name = QFileInfo(path).fileName();
    button->setObjectName(QStringLiteral("recentFile"));
    button->setText(
        button->fontMetrics().elidedText(name, Qt::ElideMiddle, FileNameWidth).replace('&', "&&"));
    button->setToolTip(QDir::toNativeSeparators(path));
    button->setAccessibleName(EmptyPage::tr("Open %1").arg(name));
    button->setFlat(true);
    button->setCursor(Qt::PointingHandCursor);
    return button;
}
} // namespace

EmptyPage::EmptyPage(RecentFiles* recentFiles, QWidget* parent)
    : QWidget(parent), m_pRecentFiles(recentFiles), m_pRecentBox(new QWidget)
{
    setObjectName(QStringLiteral("emptyPage"));
    setAttribute(Qt::WA_StyledBackground);

    auto* open = new QPushButton(tr("Open…"));
    open->setObjectName(QStringLiteral("openButton"));
    open->setToolTip(tr("Open a picture from a file (%1)")
                         .arg(QKeySequence(QKeySequence::Open).toString(QKeySequence::NativeText)));
    auto* create = new QPushButton(tr("New…"));
    create->setObjectName(QStringLiteral("newButton"));
    create->setToolTip(tr("Start with an empty picture (%1)")
                           .arg(QKeySequence(QKeySequence::New).toString(QKeySequence::NativeText)));
    open->setIcon(ZKIconHelper::DisabledIcon("theme:file_open.png"));
    create->setIcon(ZKIconHelper::DisabledIcon("theme:file_new.png"));
    setFocusProxy(open);
    connect(open, &QPushButton::clicked, this, &EmptyPage::OpenRequested);
    connect(create, &QPushButton::clicked, this, &EmptyPage::NewRequested);

    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(8);
    buttons->addWidget(open);
    buttons->addWidget(create);

    m_pRecentLayout = new QVBoxLayout(m_pRecentBox);
    m_pRecentLayout->setContentsMargins(0, 0, 0, 0);
    m_pRecentLayout->setSpacing(0);

    auto* column = new QVBoxLayout;
    column->setSpacing(16);
    column->addStretch(2);
    column->addWidget(MakeLabel(tr("Open a picture, or drop one here"), QStringLiteral("emptyPageTitle")));
    column->addLayout(buttons);
    column->addWidget(m_pRecentBox);
    column->addStretch(3);

    auto* whole = new QHBoxLayout(this);
    whole->addStretch();
    whole->addLayout(column);
    whole->addStretch();

    connect(m_pRecentFiles, &RecentFiles::Changed, this, &EmptyPage::RebuildRecentFiles);
    RebuildRecentFiles();
}

void EmptyPage::RebuildRecentFiles()
{
    while (QLayoutItem* item = m_pRecentLayout->takeAt(0)) {
        // One of these buttons may have sent the signal that leads here.
        if (item->widget()) item->widget()->deleteLater();
        delete item;
    }

    const QStringList paths = m_pRecentFiles->GetExisting().mid(0, ShownRecentFiles);
    m_pRecentBox->setVisible(!paths.isEmpty());
    if (paths.isEmpty()) return;

    m_pRecentLayout->addWidget(MakeLabel(tr("Recent files"), QStringLiteral("recentFilesTitle")));
    for (const QString& path : paths) {
        QPushButton* button = MakeFileButton(path);
        connect(button, &QPushButton::clicked, this, [this, path] { emit FileRequested(path); });
        m_pRecentLayout->addWidget(button);
    }
}
