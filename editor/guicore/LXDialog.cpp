#include "guicore/LXDialog.h"

LXDialog::LXDialog(QWidget* parent, Qt::WindowFlags flags) : QDialog(parent, flags)
{
    connect(this, &QDialog::accepted, this, &LXDialog::Accepted);
    connect(this, &QDialog::rejected, this, &LXDialog::Rejected);
}

LXDialog::~LXDialog() = default;

int LXDialog::Exec()
{
    return exec() == QDialog::Accepted ? 1 : 0;
}

void LXDialog::accept()
{
    Accept();
}

void LXDialog::reject()
{
    Reject();
}

void LXDialog::Accept()
{
    QDialog::accept();
}

void LXDialog::Reject()
{
    QDialog::reject();
}
