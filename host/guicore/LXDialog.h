#pragma once

#include "ZKHostExport.h"

#include <QDialog>

/// The base of the program's dialogs. Enter accepts, Escape and closing the frame reject. Main thread only.
class ZK_HOST_EXPORT LXDialog : public QDialog
{
    Q_OBJECT

public:
    explicit LXDialog(QWidget* parent = nullptr, Qt::WindowFlags flags = {});
    ~LXDialog() override;

    /// Shows the dialog above all windows and waits until it is closed: 1 when accepted, else 0.
    int Exec();

    /// Every way of accepting or rejecting runs through Accept() and Reject().
    void accept() final;
    void reject() final;

public slots:
    /// Closes the dialog as accepted. An override that calls this base does so too; one that doesn't
    /// keeps the dialog open.
    virtual void Accept();

    /// Closes the dialog as rejected; the same holds.
    virtual void Reject();

signals:
    /// After the dialog has closed.
    void Accepted();
    void Rejected();
};
