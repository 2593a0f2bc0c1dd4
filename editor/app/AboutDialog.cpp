#include "app/AboutDialog.h"

#include "ui_AboutDialog.h"

#include "formats/LibraryVersions.h"
#include "resource/LXResource.h"

#include <QIcon>

namespace {
constexpr int PictureSize = 64;
} // namespace

AboutDialog::AboutDialog(QWidget* parent) : LXDialog(parent), m_pUi(std::make_unique<Ui::AboutDialog>())
{
    m_pUi->setupUi(this);
    const QString product = LXResource::GetData(LXResource::ProductName).toString();
    setWindowTitle(tr("About %1").arg(product));
    m_pUi->m_pPictureLbl->setPixmap(
        QApplication::windowIcon().pixmap(window()->windowHandle(), {PictureSize, PictureSize}));
    m_pUi->m_pNameLbl->setText(
        tr("%1 %2").arg(product, LXResource::GetData(LXResource::ProductVersion).toString()));
    const QStringList libraries =
        QStringList{tr("Qt %1").arg(QLatin1String(qVersion()))} + FormatLibraryVersions();
    m_pUi->m_pLibrariesLbl->setText(libraries.join('\n'));
    layout()->setSizeConstraint(QLayout::SetFixedSize);
    connect(m_pUi->m_pButtons, &QDialogButtonBox::rejected, this, &AboutDialog::Reject);
}

AboutDialog::~AboutDialog() = default;
