// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QDialog>
#include <QTimer>

#include <memory>

class JsonModule;
class LogFilterModel;
class LogModel;
class LogRing;

namespace Ui {
class LogViewerDialog;
}

/// Shows the program's log as it grows, and saves it for those who help.
class LogViewerDialog : public QDialog
{
    Q_OBJECT

public:
    /// Both outlive the dialog. The document's file is read when an archive is saved.
    LogViewerDialog(const LogRing &ring, const JsonModule &configuration, QWidget *parent = nullptr);
    ~LogViewerDialog() override;

private:
    void setUpFilter();
    void setUpTable();
    void setUpFollowing();
    void setUpButtons();
    void refresh();
    void updateCount();
    /// Keeps the lines in place that are being read, when older ones go.
    void holdPosition(int removedRows);
    void copySelection();
    void showCurrentLine();
    void saveArchive();
    void writeArchive(const QString &folder, const QString &stick);
    void showStatus(const QString &text);

    std::unique_ptr<Ui::LogViewerDialog> m_ui;
    const LogRing &m_ring;
    const JsonModule &m_configuration;
    LogModel *m_model;
    LogFilterModel *m_shown;
    QTimer m_refreshTimer;
};
