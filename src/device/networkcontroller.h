// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "device/networkproperty.h"
#include "device/toolqueue.h"
#include "device/wifiitem.h"

#include <QHash>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QVector>

#include <functional>
#include <optional>

/// The one class that knows the network tools: their command lines, and how to read what they print.
///
/// Nothing here waits. Commands take their turn in a queue and tell nothing of their outcome. Queries start
/// at once; a tool that is missing, hangs or prints something else reads as no reply, or as empty fields.
class NetworkController : public QObject
{
    Q_OBJECT

public:
    /// What the Wi-Fi tool said last.
    enum WifiResult { Pending = 0, IncorrectKey = 1, Connected = 2, CertificateRejected = 3 };

    /// What the network tool says to a question: nothing when it failed, hung, or printed neither "true" nor
    /// "false".
    using Reply = std::optional<bool>;
    using ReplyDone = std::function<void(Reply)>;
    /// The flag says whether the property is known: the interface has one of the two names, or an access
    /// point is associated.
    using PropertyDone = std::function<void(bool known, const NetworkProperty &)>;
    using ScanDone = std::function<void(const QList<WifiItem> &)>;

    explicit NetworkController(QObject *parent = nullptr);
    /// Commands take their turn in `commands`, which outlives the object.
    explicit NetworkController(ToolQueue &commands, QObject *parent = nullptr);
    ~NetworkController() override;

    // Queries. Each starts at once and calls `done` from the event loop, after `Commands::timeLimitMs` at the
    // latest, unless `context` is gone by then. The same question asked twice at a time runs the tool once.
    void CheckWiredPlugged(QObject *context, const ReplyDone &done);
    void isWiredUp(QObject *context, const ReplyDone &done);
    void isWifiConnected(QObject *context, const ReplyDone &done);
    void isEthernetConnected(QObject *context, const ReplyDone &done);
    void getActualWifi(QObject *context, const PropertyDone &done);
    void getNetworkByInterface(const QString &interface, QObject *context, const PropertyDone &done);
    /// A new scan, strongest network first; empty when it failed.
    void GetWifiNetworkList(QObject *context, const ScanDone &done);

    /// Hands the configuration document, as it stands on disk, to the network tool.
    void setNetworkConfig();
    void connectWired();
    void disableWiredInterface();
    void enableWiredInterface();
    void disconnect();
    /// `done` is called when the tool has ended.
    void disconnectWifi(const ToolDone &done = nullptr);
    void autoconnect();
    void setRoutingTable();
    /// Adds an address to an interface or, with `add` false, takes it off. `broadcast` may be empty.
    void setIpConfigure(const QString &interface, const QString &address, int prefixLength, bool add,
                        const QString &broadcast);

    /// Appends a line to the log of addresses that were taken off.
    void logBroadcast(const QString &line);

    /// For tests that have no half a minute to spare.
    void setQueryLimit(int milliseconds);
    /// Calls `step` when all commands so far have ended, unless `context` is gone by then.
    void afterCommands(QObject *context, const std::function<void()> &step);

    /// Joins an open network (empty key) or one with a pass phrase, once the commands so far have ended.
    /// Always returns false: `setWifiStatus` tells how it went. The end of a join is not reported when
    /// another one or `disconnectWifi` came after it.
    bool connectToWifi(const QString &ssid, const QString &key, bool hidden);
    /// Joins an 802.1x network. Always returns false, as above.
    bool connectToWifi(const WifiItem &item);
    WifiResult wifiResult() const;

    /// The gateway column of the first route in the output of "route -n"; empty when there is none.
    static QString gatewayFromRoutes(const QString &routes);
    /// The first two name servers of a resolv.conf go into `dns1` and `dns2`.
    static void readNameServers(const QByteArray &resolvConf, NetworkProperty &property);

signals:
    /// A join has ended; true when the network is connected.
    void setWifiStatus(bool connected);

private:
    using OutputDone = std::function<void(const ToolResult &)>;
    struct Waiter
    {
        QPointer<QObject> context;
        OutputDone done;
    };

    void query(const ToolCall &call, QObject *context, const OutputDone &done);
    void ask(const QString &subCommand, QObject *context, const ReplyDone &done);
    bool join(const ToolCall &call);
    void endJoin(const ToolResult &result);
    static bool readAccessPoint(const QByteArray &output, NetworkProperty &property);
    static void readParameters(const QByteArray &output, NetworkProperty &property);
    static void readNameServers(NetworkProperty &property);
    static QList<WifiItem> readScan(const QByteArray &output);
    static void readInterface(const QString &name, NetworkProperty &property);

    ToolQueue m_ownCommands;
    ToolQueue &m_commands;
    QHash<QString, QVector<Waiter>> m_waiting; ///< by the query that is under way
    int m_queryLimitMs = Commands::timeLimitMs;
    WifiResult m_wifiResult = Pending;
    int m_join = 0; ///< counts joins, and what abandons one
};
