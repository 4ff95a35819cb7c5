// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "services/connecttarget.h"
#include "models/itemmodel.h"

#include <QHostAddress>
#include <QJsonArray>
#include <QJsonObject>
#include <QMap>
#include <QWidget>

#include <memory>
#include <optional>

class QFrame;
class QPushButton;

namespace Ui {
class CorvidPage;
}

/// The launcher's page for Corvid servers: the configured groups, the servers found on the network, and an
/// address typed by hand. At most one row of the two lists is selected.
class CorvidPage : public QWidget
{
    Q_OBJECT

public:
    explicit CorvidPage(QWidget *parent = nullptr);
    ~CorvidPage() override;

    /// Shows the groups; what is selected and unfolded stays so where it is still there.
    void setGroups(const QJsonArray &groups);
    void setAutoDetectedShown(bool shown);
    void setManualEntryAllowed(bool allowed);
    void setHistory(const QJsonArray &addresses);
    /// "my desktop" shows the lists; any other word shows the entry of an address, where that is allowed.
    void setSelection(const QString &selection);

    /// What Connect would connect to; nothing while no row is selected and no address typed.
    std::optional<ConnectTarget> target() const;
    bool manualEntryShown() const;
    /// Where a user begins: the list, or the address to type.
    void focusFirst();

public slots:
    /// The search has begun.
    void autoDetectServers();
    /// The search has ended with these servers.
    void setServerList(const QMap<QString, QHostAddress> &servers);
    void updateGreenFrame();
    void groupSliderValueChanged(int value);

signals:
    void refreshRequested();
    void selectionChosen(const QString &selection);
    void targetChanged();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void setUpLists();
    void showChoice(bool manual);
    void choose(bool manual);
    /// Shows rows below a heading, if there is one, and below them the chosen server where it is not among
    /// them.
    void showDetected(const QString &heading, const QList<Item *> &rows, const QString &keptText);
    void selectOnly(QWidget *view);
    void chooseGroupRow(const QStringList &names);
    void rememberServer();
    void chooseServer();
    bool isChosen(const Item &row) const;
    static int frameTop(int row, int scrollPosition);

    std::unique_ptr<Ui::CorvidPage> m_ui;
    ItemModel m_groups;
    ItemModel m_detected;
    QFrame *m_greenFrame;
    ServerEntry m_chosenServer; ///< in the list of detected servers; stays until the user chooses another
    const Item *m_keptRow = nullptr; ///< of the chosen server while a search misses it
    bool m_manualAllowed = true;
};
