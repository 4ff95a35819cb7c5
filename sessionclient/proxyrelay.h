// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QObject>
#include <QTcpServer>
#include <QUrl>

/// Logs on to an HTTP proxy in place of xfreerdp, which cannot. It listens on the loopback interface, adds
/// the log-on ("Basic") to each request for a tunnel, and passes everything else on unchanged.
class ProxyRelay : public QObject
{
    Q_OBJECT

public:
    static constexpr int mostTunnels = 8;
    static constexpr int longestRequest = 8 * 1024;

    explicit ProxyRelay(QObject *parent = nullptr);

    /// Starts to listen. Returns the address for xfreerdp, or `proxy` itself if that fails.
    QUrl start(const QUrl &proxy);
    /// Whether the proxy has rejected the log-on.
    bool isRejected() const { return m_rejected; }

private:
    void openTunnels();

    QTcpServer m_server;
    QUrl m_proxy;
    int m_tunnels = 0;
    bool m_rejected = false;
};
