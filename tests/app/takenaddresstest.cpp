// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "config/jsonmodule.h"
#include "device/networkcontroller.h"
#include "linklistener.h"
#include "onlyinnamespace.h"
#include "services/networkstatus.h"
#include "testdevice.h"
#include "testtable.h"

#include <QtTest>

/// The wired address that is off while the cable is out, and a program that ends meanwhile.
class TakenAddressTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        const QJsonObject eth{{"enabled", true}, {"type", "dhcp"}};
        const QJsonObject interfaces{{"eth", eth}};
        m_configuration.setObject({{"network settings", QJsonObject{{"interfaces", interfaces}}}});
    }

    void putsTheAddressBackAfterARestart_data()
    {
        const TestTable<bool> table("machineRestarted");
        table.row("of the program", false);
        table.row("of the machine", true);
    }

    /// The program ends while the cable is out, and starts when it is in again.
    void putsTheAddressBackAfterARestart()
    {
        QFETCH(const bool, machineRestarted);
        const QString record = "/var/lib/kt964/taken-address.json";
        {
            NetworkController network;
            NetworkStatus before(network, m_configuration);
            before.setInterval(20);
            before.initNetworkStatus();
            QTRY_COMPARE(before.wiredState(), Link::Connected);
            m_device.forgetCalls();
            m_device.setState("cable", "unplugged");
            QTRY_VERIFY(!m_device.calls("kt-ip-settings").isEmpty());
        }
        m_device.setState("wired-address", "");
        QVERIFY(m_device.exists(record));
        if (machineRestarted)
            m_device.write(record, m_device.read(record).replace("boot\": \"", "boot\": \"x"));
        m_device.setState("cable", "plugged");
        m_device.forgetCalls();
        NetworkController network;
        NetworkStatus after(network, m_configuration);
        LinkListener said(&after);
        after.setInterval(20);
        after.initNetworkStatus();
        if (machineRestarted) {
            QTRY_VERIFY(said.hearWired().startsWith("shown, green, icon link, address  off"));
            QVERIFY(m_device.calls("kt-ip-settings").isEmpty());
            return;
        }
        QTRY_VERIFY(said.hearWired().contains("icon connected, address 10.77.0.10"));
        QCOMPARE(m_device.calls("kt-ip-settings"),
                 QStringList("kt-ip-settings -a eth0 10.77.0.10 24 10.77.0.255"));
        QTRY_VERIFY(!m_device.exists(record));
    }

private:
    using Link = NetworkStatus::Link;

    TestDevice m_device;
    JsonModule m_configuration{"config.json", true};
};

QTEST_GUILESS_MAIN(TakenAddressTest)
#include "takenaddresstest.moc"
