// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "session/reasonwindow.h"

#include <QGuiApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QVBoxLayout>

namespace {

constexpr int grid = 8;
constexpr int windowWidth = 80 * grid;
constexpr int margin = 4 * grid;

/// White on #525252 has a contrast of 7.8:1. Text is never green.
const char styleSheetText[] = R"(
    ReasonWindow { background: #ffffff; border: 1px solid rgb(222,222,222); border-top: 8px solid rgb(131,182,43); }
    QLabel { color: #525252; font-size: 16px; }
    QLabel#reasonLabel { font-size: 24px; font-weight: bold; }
    QLabel#rawLabel, QLabel#remainingLabel { font-size: 14px; }
    QLabel#fingerprintLabel { font-family: monospace; font-size: 14px; }
    QPushButton { color: #ffffff; background: #525252; border: 3px solid #525252; border-radius: 4px; font-size: 16px;
                  min-width: 120px; padding: 0 8px; min-height: 34px; }
    QPushButton:focus { border-color: rgb(131,182,43); }
    QPushButton:pressed { background: #3a3a3a; }
)";

QLabel *addLabel(QVBoxLayout *layout, const char *name, const QString &text)
{
    auto *label = new QLabel(text);
    label->setObjectName(QLatin1String(name));
    label->setTextFormat(Qt::PlainText); // the text may contain a program's output
    label->setWordWrap(true);
    layout->addWidget(label);
    return label;
}

QString certificateQuestion(const CertificateChange &change)
{
    return ReasonWindow::tr(
               "%1 has a new certificate. Either the server was renewed, or another computer imitates "
               "it to get your password. Trust the new certificate only if your administrator confirms "
               "its fingerprint.")
        .arg(change.server());
}

/// A fingerprint has no blanks, so it is broken in the middle.
QString fingerprints(const CertificateChange &change)
{
    const auto inTwoLines = [](const QString &fingerprint) {
        const int half = fingerprint.size() / 2 + 1;
        return fingerprint.left(half) + QLatin1Char('\n') + fingerprint.mid(half);
    };
    return ReasonWindow::tr("New:\n%1\nKnown until now:\n%2")
        .arg(inTwoLines(change.offered), inTwoLines(change.known));
}

} // namespace

ReasonWindow::ReasonWindow(const SessionEnd &end, QWidget *parent)
    : QWidget(parent, Qt::Window | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint)
    , m_timer(new QTimer(this))
    , m_remaining(end.certificate ? askedSeconds : shownSeconds)
{
    setAttribute(Qt::WA_StyledBackground);
    setWindowTitle(tr("Session"));
    setStyleSheet(QLatin1String(styleSheetText));
    build(end);
    m_timer->setObjectName(QStringLiteral("closeTimer"));
    m_timer->setInterval(1000);
    connect(m_timer, &QTimer::timeout, this, &ReasonWindow::countDown);
    showRemaining();
}

void ReasonWindow::build(const SessionEnd &end)
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(margin, margin, margin, margin);
    layout->setSpacing(2 * grid);
    addLabel(layout, "reasonLabel", reasonText(end.reason));
    addLabel(layout, "nextStepLabel",
             end.certificate ? certificateQuestion(*end.certificate) : reasonNextStep(end.reason));
    if (end.certificate)
        addLabel(layout, "fingerprintLabel", fingerprints(*end.certificate));
    addLabel(layout, "rawLabel", tr("For your administrator: %1").arg(end.raw));

    auto *bottom = new QHBoxLayout;
    m_remainingLabel = new QLabel;
    m_remainingLabel->setObjectName(QStringLiteral("remainingLabel"));
    auto *closeButton = new QPushButton(end.certificate ? tr("Do not trust") : tr("Close"));
    closeButton->setObjectName(QStringLiteral("closeButton"));
    closeButton->setDefault(true);
    connect(closeButton, &QPushButton::clicked, this, &QWidget::close);
    bottom->addWidget(m_remainingLabel, 1);
    if (end.certificate)
        addTrustButton(bottom);
    bottom->addWidget(closeButton);
    layout->addSpacing(grid);
    layout->addLayout(bottom);
    closeButton->setFocus(); // it has a window only now
    setFixedWidth(windowWidth);
}

/// Enter and Escape mean no, whichever button has the keyboard.
void ReasonWindow::addTrustButton(QHBoxLayout *row)
{
    auto *trustButton = new QPushButton(tr("Trust and connect"));
    trustButton->setObjectName(QStringLiteral("trustButton"));
    connect(trustButton, &QPushButton::clicked, this, [this] {
        m_trusted = true;
        close();
    });
    row->addWidget(trustButton);
}

void ReasonWindow::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    adjustSize();
    move(QGuiApplication::primaryScreen()->geometry().center() - rect().center());
    // Without a window manager nothing else gives this window the keyboard.
    activateWindow();
    m_timer->start();
}

void ReasonWindow::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape || event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        close();
    else
        QWidget::keyPressEvent(event);
}

void ReasonWindow::countDown()
{
    --m_remaining;
    showRemaining();
    if (m_remaining <= 0)
        close();
}

void ReasonWindow::showRemaining()
{
    m_remainingLabel->setText(tr("This window closes in %1 s.").arg(m_remaining));
}
