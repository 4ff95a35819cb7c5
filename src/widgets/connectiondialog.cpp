// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "widgets/connectiondialog.h"

#include "ui_connectiondialog.h"

#include <QCloseEvent>
#include <QScreen>

namespace {
constexpr int widestAddress = 480;
}

ConnectionDialog::ConnectionDialog(QWidget *parent)
    : QDialog(parent, Qt::Dialog | Qt::FramelessWindowHint)
    , m_ui(std::make_unique<Ui::ConnectionDialog>())
    , m_movie(QStringLiteral(":/images/connecting_ani.gif"))
{
    m_ui->setupUi(this);
    setWindowTitle(tr("Connecting"));
    m_ui->animationLabel->setMovie(&m_movie);
    m_ui->addressLabel->hide();
    m_ui->statusLabel->hide();
    m_ui->statusWidget->hide();
}

ConnectionDialog::~ConnectionDialog() = default;

void ConnectionDialog::show()
{
    m_movie.start();
    QDialog::show();
    adjustSize();
    if (const QScreen *shown = screen())
        move(shown->geometry().center() - rect().center());
}

void ConnectionDialog::hide()
{
    m_movie.stop();
    QDialog::hide();
}

int ConnectionDialog::exec()
{
    m_movie.start();
    const int result = QDialog::exec();
    m_movie.stop();
    return result;
}

void ConnectionDialog::reject()
{
    // Escape must not hide the box while the client starts.
}

void ConnectionDialog::closeEvent(QCloseEvent *event)
{
    m_movie.stop();
    QDialog::closeEvent(event);
}

void ConnectionDialog::setAddress(const QString &address)
{
    m_ui->firstLabel->hide();
    m_ui->addressLabel->setText(
        m_ui->addressLabel->fontMetrics().elidedText(address, Qt::ElideMiddle, widestAddress));
    m_ui->addressLabel->setAccessibleName(address);
    m_ui->addressLabel->show();
    adjustSize();
}

void ConnectionDialog::setStatus(const QString &text, bool statusShown)
{
    m_ui->statusLabel->setText(text);
    m_ui->statusLabel->show();
    m_ui->statusWidget->setVisible(statusShown);
    m_connectionStatus = text == tr("Done connecting...");
}

QString ConnectionDialog::checkStatus() const
{
    return m_ui->statusLabel->text();
}

bool ConnectionDialog::getConnectionStatus() const
{
    return m_connectionStatus;
}

void ConnectionDialog::showFirstLabel(bool shown)
{
    m_ui->firstLabel->setVisible(shown);
}

void ConnectionDialog::unlock()
{
    m_ui->statusWidget->show();
}
