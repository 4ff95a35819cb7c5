// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "certificates/certificatestore.h"
#include "device/networkcontroller.h"
#include "device/resolutioncontainer.h"
#include "device/toolqueue.h"
#include "openedpage.h"
#include "pages/networkpage.h"
#include "pages/wpacredentialdialog.h"
#include "services/settingsapplier.h"

#include <QtTest>
#include <QtWidgets>

#include <functional>

inline QJsonObject json(const char *text)
{
    return QJsonDocument::fromJson(QByteArray(text).replace('\'', '"')).object();
}

inline QJsonObject network(const char *eth, const char *wlan, const char *dns)
{
    const QJsonObject interfaces{{"eth", json(eth)}, {"wlan", json(wlan)}};
    return {{"network settings", QJsonObject{{"interfaces", interfaces}, {"DNS", json(dns)}}}};
}

/// The page on a device of its own.
struct Opened : HeldDocument
{
    explicit Opened(const char *eth, const char *wlan, const char *dns = "{'type': 'dhcp'}")
        : HeldDocument(network(eth, wlan, dns))
    {
        applier.start(); // the device is as the document says
        settle();
        page.fill();
        page.show();
        toolsReplied();
        device.forgetCalls();
    }

    /// The network tool has replied to what the page has asked so far.
    void toolsReplied()
    {
        int replies = 0;
        controller.getNetworkByInterface("eth0", &page, [&](bool, const auto &) { ++replies; });
        controller.GetWifiNetworkList(&page, [&](const auto &) { ++replies; });
        QTRY_COMPARE(replies, 2);
    }

    /// Below an editor: "ethernetEditor.maskLineEdit".
    template <typename Widget>
    Widget *field(const QString &path) const
    {
        const QWidget *editor = &page;
        if (path.contains('.'))
            editor = part(page, path.section('.', 0, 0));
        return editor->findChild<Widget *>(path.section('.', -1));
    }

    /// Clicks and types: "box" clicks, "line=text" types, "combo:n" chooses.
    void edit(const QStringList &edits) const
    {
        for (const QString &text : edits) {
            const QString name = text.section('=', 0, 0).section(':', 0, 0);
            if (auto *button = field<QAbstractButton>(name)) {
                button->click();
                QTRY_VERIFY(button->isEnabled()); // a scan has ended
            } else if (auto *line = field<QLineEdit>(name)) {
                line->clear();
                QTest::keyClicks(line, text.section('=', 1));
            } else {
                field<QComboBox>(name)->setCurrentIndex(text.section(':', 1).toInt());
            }
        }
    }

    void scan(const QByteArray &answer) const
    {
        device.write("/lab/answers/kt-network-config.get-wifi-list", answer);
        edit({"scanButton"});
    }

    void inDialog(const std::function<void(WpaCredentialDialog &)> &act) const
    {
        bool seen = false;
        QTimer::singleShot(0, qApp, [&] {
            auto *dialog = qobject_cast<WpaCredentialDialog *>(QApplication::activeModalWidget());
            seen = dialog;
            if (dialog)
                act(*dialog);
        });
        press(page, "editWifiButton");
        QVERIFY(seen);
    }

    void settle() { QTRY_VERIFY(!applier.isBusy()); }

    QJsonValue stored() const { return device.document()["network settings"]; }
    QComboBox *networks() const { return part<QComboBox>(page, "wifiComboBox"); }

    ToolQueue commands;
    NetworkController controller{commands};
    ResolutionContainer resolutions;
    SettingsApplier applier{configuration, commands, controller, resolutions};
    CertificateStore store{configuration};
    NetworkPage page{configuration, controller, store};
};
