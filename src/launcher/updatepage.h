// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QWidget>

#include <memory>

namespace Ui {
class UpdatePage;
}

/// The progress window of a firmware update: what is fetched, how much of it is there, and how it ended.
class UpdatePage : public QWidget
{
    Q_OBJECT

public:
    explicit UpdatePage(QWidget *parent = nullptr);
    ~UpdatePage() override;

    /// -1 of -1 when nothing is known yet.
    void showProgress(const QString &what, qint64 received, qint64 total);
    void showInstalling(const QString &message);
    void showFailure(const QString &message);
    void showCountdown(int seconds);

private:
    QString elided(const QString &text) const;
    void showText(const QString &text);
    void showPercentage(int percentage);

    std::unique_ptr<Ui::UpdatePage> m_ui;
};
