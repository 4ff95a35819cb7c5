// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "pages/aboutpage.h"

#include "config/keys.h"
#include "device/devicetools.h"
#include "device/identity.h"
#include "device/networkcontroller.h"

#include <QClipboard>
#include <QGridLayout>
#include <QGuiApplication>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

constexpr int nameWidth = 176;

QString orUnknown(const QString &value)
{
    return value.isEmpty() ? AboutPage::tr("unknown") : value;
}

} // namespace

AboutPage::AboutPage(JsonModule &configuration, NetworkController &network, QWidget *parent)
    : SettingsPage(configuration, tr("About"), QStringLiteral(":/images/page_about.png"), parent)
    , m_network(network)
    , m_facts(new QGridLayout)
{
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(16);
    m_facts->setHorizontalSpacing(16);
    m_facts->setVerticalSpacing(8);
    m_facts->setColumnMinimumWidth(0, nameWidth);
    m_facts->setColumnStretch(1, 1);
    layout->addLayout(m_facts);

    addFact(tr("Device model"), "modelLabel");
    addFact(tr("Device family"), "familyLabel");
    addFact(tr("Serial number"), "serialLabel");
    addFact(tr("Host name"), "hostNameLabel");
    addFact(tr("Firmware version"), "firmwareVersionLabel");
    addFact(tr("Firmware name"), "firmwareNameLabel");
    addFact(tr("Launcher version"), "launcherVersionLabel");
    addFact(tr("Configuration version"), "configurationVersionLabel");
    addFact(tr("Ethernet address"), "ethernetAddressLabel");
    addFact(tr("Ethernet MAC"), "ethernetMacLabel");
    addFact(tr("Wi-Fi address"), "wifiAddressLabel");
    addFact(tr("Wi-Fi MAC"), "wifiMacLabel");
    addFact(tr("Uptime"), "uptimeLabel");
    addFact(tr("Licences"), "licencesLabel");
    setFact("launcherVersionLabel", QStringLiteral(KT_VERSION));
    setFact("licencesLabel",
            tr("Qt %1 (LGPL 3)\nFreeRDP (Apache 2.0)\nOpenSSL 3 (Apache 2.0)\nThis program: Apache 2.0")
                .arg(QLatin1String(qVersion())));

    auto *copy = new QPushButton(tr("Copy all"), this);
    copy->setObjectName(QStringLiteral("copyAboutButton"));
    connect(copy, &QPushButton::clicked, this, [this] { QGuiApplication::clipboard()->setText(text()); });
    layout->addWidget(copy, 0, Qt::AlignLeft);
    layout->addStretch();
}

void AboutPage::addFact(const QString &name, const char *objectName)
{
    auto *value = new QLabel(this);
    value->setObjectName(QLatin1String(objectName));
    value->setAccessibleName(name);
    value->setTextFormat(Qt::PlainText);
    value->setWordWrap(true);
    value->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    auto *title = new QLabel(name, this);
    title->setAlignment(Qt::AlignTop);
    m_facts->addWidget(title, m_labels.size(), 0);
    m_facts->addWidget(value, m_labels.size(), 1);
    m_labels.append({name, value});
}

void AboutPage::setFact(const char *objectName, const QString &value)
{
    findChild<QLabel *>(QLatin1String(objectName))->setText(value);
}

void AboutPage::load(const QJsonObject &root)
{
    const QJsonObject info = root.value(Key::firmwareInfo).toObject();
    const Identity::Firmware firmware = Identity::firmware();
    setFact("modelLabel", orUnknown(info.value(Key::deviceModel).toString()));
    setFact("familyLabel", orUnknown(info.value(Key::deviceFamily).toString()));
    setFact("serialLabel", orUnknown(Identity::serialNumber()));
    setFact("firmwareVersionLabel", firmware.version);
    setFact("firmwareNameLabel", orUnknown(firmware.name));
    setFact("configurationVersionLabel", QString::number(info.value(Key::configurationVersion).toInt()));
    setFact("uptimeLabel", uptime());
    askHostName();
    askInterface(QStringLiteral("eth0"), "ethernetAddressLabel", "ethernetMacLabel");
    askInterface(QStringLiteral("wlan0"), "wifiAddressLabel", "wifiMacLabel");
}

void AboutPage::askHostName()
{
    ToolRun::start(DeviceTools::hostName(), this, [this](const ToolResult &result) {
        setFact("hostNameLabel", orUnknown(QString::fromLocal8Bit(result.output).trimmed()));
    });
}

void AboutPage::askInterface(const QString &interface, const char *address, const char *mac)
{
    m_network.getNetworkByInterface(
        interface, this, [this, address, mac](bool, const NetworkProperty &property) {
            setFact(address, property.ip().isEmpty() ? tr("not connected") : property.ip());
            setFact(mac, property.mac().isEmpty() ? tr("not present") : property.mac());
        });
}

QString AboutPage::uptime()
{
    const qint64 minutes = Identity::uptimeSeconds() / 60;
    return tr("%1 days, %2 hours, %3 minutes").arg(minutes / 1440).arg(minutes / 60 % 24).arg(minutes % 60);
}

QString AboutPage::text() const
{
    QStringList lines;
    for (const auto &label : m_labels)
        lines += QStringLiteral("%1: %2").arg(label.first, label.second->text());
    return lines.join(QLatin1Char('\n')) + QLatin1Char('\n');
}
