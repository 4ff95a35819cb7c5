// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "config/supportarchive.h"

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

/// Shows the program's log while it grows, and saves it to a USB stick for support.
class LogViewerDialog : public QDialog
{
    Q_OBJECT

public:
    /// Both must outlive the dialog. Saving an archive reads the document's file.
    LogViewerDialog(const LogRing &ring, const JsonModule &configuration, QWidget *parent = nullptr);
    ~LogViewerDialog() override;

private:
    void setUpFilter();
    void setUpTable();
    void setUpFollowing();
    void setUpButtons();
    void refresh();
    void updateCount();
    /// Keeps the visible lines in place when the ring drops older ones.
    void keepScrollPosition(int removedRows);
    void copySelection();
    void showCurrentLine();
    void saveArchive();
    void writeArchive(const QString &folder, const QString &stick);
    void showSaved(const SupportArchive::Result &result, const QString &stick);
    void showStatus(const QString &text);

    std::unique_ptr<Ui::LogViewerDialog> m_ui;
    const LogRing &m_ring;
    const JsonModule &m_configuration;
    LogModel *m_model;
    LogFilterModel *m_filtered;
    QTimer m_refreshTimer;
};
