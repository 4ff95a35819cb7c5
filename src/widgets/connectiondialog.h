// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QDialog>
#include <QMovie>

#include <memory>

namespace Ui {
class ConnectionDialog;
}

/// The animated box that names what is being connected to while a client starts. The user cannot dismiss it;
/// its owner hides it.
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

    /// A name or an address; one that is wider than the box is shortened in the middle.
    void setAddress(const QString &address);
    /// Shows a line of progress; "Done connecting..." is the last of them.
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
