// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QDialog>
#include <QMovie>

#include <memory>

namespace Ui {
class ConnectionDialog;
}

/// The animated box that is shown while a client starts, with the name or address of the server. The user
/// cannot close it; its owner hides it.
class ConnectionDialog : public QDialog
{
    Q_OBJECT

public:
    explicit ConnectionDialog(QWidget *parent = nullptr);
    ~ConnectionDialog() override;

    void show();
    void hide();
    int exec() override;
    void reject() override;

    /// A name or an address; the middle of a wide one is elided.
    void setAddress(const QString &address);
    /// Shows a progress message; "Done connecting..." is the last one.
    void setStatus(const QString &text, bool statusShown);
    QString checkStatus() const;
    bool getConnectionStatus() const;
    void showFirstLabel(bool shown);
    void unlock();

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    std::unique_ptr<Ui::ConnectionDialog> m_ui;
    QMovie m_movie;
    bool m_connectionStatus = false;
};
