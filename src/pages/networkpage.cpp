// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "pages/networkpage.h"

#include "config/keys.h"
#include "config/wifisettings.h"
#include "device/networkcontroller.h"
#include "pages/addresseditor.h"
#include "pages/ipv4validator.h"
#include "pages/wifichooser.h"

#include "ui_networkpage.h"

#include <QSignalBlocker>

namespace {

const QString red = QStringLiteral(":/images/network_indicator_red.png");
const QString dhcp = QStringLiteral("dhcp");
const QString fixed = QStringLiteral("static");

QJsonObject member(const QJsonObject &object, QLatin1String key)
{
    return object.value(key).toObject();
}

/// Names a field whose text is not the address that it is for.
QString notUsable(const QString &fieldName, const QLineEdit *field)
{
    return NetworkPage::tr("%1: \"%2\" cannot be used. Correct it and try again")
        .arg(fieldName, field->text());
}

} // namespace

NetworkPage::NetworkPage(JsonModule &configuration, NetworkController &network,
                         CertificateStore &certificates, QWidget *parent)
    : SettingsPage(configuration, tr("Network"), QStringLiteral(":/images/page_network.png"), parent)
    , m_ui(std::make_unique<Ui::NetworkPage>())
    , m_network(network)
    , m_wifi(new WifiChooser(network, certificates))
    , m_ethernetImage(red)
    , m_wifiImage(red)
{
    m_ui->setupUi(this);
    for (QLineEdit *field : {m_ui->dns1LineEdit, m_ui->dns2LineEdit})
        field->setValidator(new Ipv4Validator(Ipv4Validator::Kind::Host, field));
    connectEditors();
    m_ui->wifiLayout->insertWidget(0, m_wifi);
    m_wifi->putIntoTabOrder(m_ui->wifiCheckBox);
    updateFields();
}

NetworkPage::~NetworkPage() = default;

void NetworkPage::connectEditors()
{
    watchEditors();
    connect(m_wifi, &WifiChooser::changed, this, &NetworkPage::markChanged);
    for (QCheckBox *box : {m_ui->ethernetCheckBox, m_ui->wifiCheckBox, m_ui->proxyCheckBox})
        connect(box, &QCheckBox::toggled, this, &NetworkPage::updateFields);
    connect(m_ui->dnsStaticRadioButton, &QRadioButton::toggled, this, &NetworkPage::chooseStaticDns);
}

void NetworkPage::updateFields()
{
    m_ui->ethernetEditor->setEnabled(m_ui->ethernetCheckBox->isChecked());
    m_ui->wifiWidget->setVisible(m_ui->wifiCheckBox->isChecked());
    m_ui->proxyWidget->setEnabled(m_ui->proxyCheckBox->isChecked());
    m_ui->dnsWidget->setEnabled(m_ui->dnsStaticRadioButton->isChecked());
}

void NetworkPage::chooseStaticDns(bool isStatic)
{
    updateFields();
    if (isFilling() || isStatic)
        return;
    m_ui->dns1LineEdit->setText(m_live.dns1());
    m_ui->dns2LineEdit->setText(m_live.dns2());
}

void NetworkPage::discard()
{
    ++m_filling;
    m_wifi->abandonScan();
    forgetChanges();
}

void NetworkPage::load(const QJsonObject &root)
{
    setNetworkTab(member(root, Key::network));
}

void NetworkPage::setNetworkTab(const QJsonObject &network)
{
    const QJsonObject interfaces = member(network, Key::interfaces);
    const QJsonObject eth = member(interfaces, Key::eth);
    m_ui->ethernetCheckBox->setChecked(eth.value(Key::enabled).toBool());
    m_ui->ethernetEditor->load(eth, m_live);
    setWifiTab(member(interfaces, Key::wlan));
    setDns(member(network, Key::dns));
    setProxy(member(network, Key::proxy));
    updateFields();
    updateIndicators();
    const int filling = ++m_filling;
    m_network.getNetworkByInterface(QStringLiteral("eth0"), this,
                                    [this, filling](bool, const NetworkProperty &live) {
                                        if (filling == m_filling)
                                            showLive(live);
                                    });
}

/// Completes what was filled before the network tool had replied. What the user edits meanwhile stays.
void NetworkPage::showLive(const NetworkProperty &live)
{
    m_live = live;
    m_ui->ethernetEditor->showLive(live);
    if (m_ui->dnsStaticRadioButton->isChecked())
        return;
    const QSignalBlocker quietFirst(m_ui->dns1LineEdit);
    const QSignalBlocker quietSecond(m_ui->dns2LineEdit);
    m_ui->dns1LineEdit->setText(live.dns1());
    m_ui->dns2LineEdit->setText(live.dns2());
}

void NetworkPage::setWifiTab(const QJsonObject &wlan)
{
    m_ui->wifiCheckBox->setChecked(wlan.value(Key::enabled).toBool());
    m_wifi->setConfigured(WifiSettings::read(wlan));
    m_ui->wifiEditor->load(wlan, NetworkProperty());
}

void NetworkPage::setDns(const QJsonObject &dns)
{
    const bool isStatic = dns.value(Key::type).toString() == fixed;
    m_ui->dnsStaticRadioButton->setChecked(isStatic);
    m_ui->dnsDhcpRadioButton->setChecked(!isStatic);
    m_ui->dns1LineEdit->setText(isStatic ? dns.value(Key::dns1).toString() : m_live.dns1());
    m_ui->dns2LineEdit->setText(isStatic ? dns.value(Key::dns2).toString() : m_live.dns2());
    m_ui->domainLineEdit->setText(dns.value(Key::domain).toString());
}

void NetworkPage::setProxy(const QJsonObject &proxy)
{
    m_ui->proxyCheckBox->setChecked(proxy.value(Key::enabled).toBool());
    m_ui->proxyAddressLineEdit->setText(proxy.value(Key::address).toString());
    m_ui->proxyPortSpinBox->setValue(proxy.value(Key::port).toInt());
    m_ui->proxyUserLineEdit->setText(proxy.value(Key::userName).toString());
    m_ui->proxyPasswordLineEdit->setText(proxy.value(Key::password).toString());
    m_ui->proxyLanCheckBox->setChecked(proxy.value(Key::noProxyForLan).toBool());
}

bool NetworkPage::wiredIsStatic() const
{
    return m_ui->ethernetCheckBox->isChecked() && m_ui->ethernetEditor->isStatic();
}

bool NetworkPage::wirelessIsStatic() const
{
    return m_ui->wifiCheckBox->isChecked() && m_ui->wifiEditor->isStatic();
}

/// True when at least one interface is enabled and none of them uses DHCP.
bool NetworkPage::allInterfacesStatic() const
{
    const bool wired = m_ui->ethernetCheckBox->isChecked();
    const bool wireless = m_ui->wifiCheckBox->isChecked();
    return (wired || wireless) && wired == wiredIsStatic() && wireless == wirelessIsStatic();
}

QString NetworkPage::addressRefusal(const AddressEditor &editor, const QString &interface,
                                    const QString &incomplete) const
{
    const QLineEdit *field = editor.incompleteField();
    if (!field)
        return QString();
    focusField(editor.incompleteField());
    return field->text().isEmpty()
        ? incomplete
        : notUsable(interface + QLatin1String(", ") + field->accessibleName(), field);
}

QString NetworkPage::dnsRefusal() const
{
    QLineEdit *const fields[] = {m_ui->dns1LineEdit, m_ui->dns2LineEdit};
    for (QLineEdit *field : fields) {
        if (!field->text().isEmpty() && !field->hasAcceptableInput()) {
            focusField(field);
            return notUsable(field->accessibleName(), field);
        }
    }
    if (!fields[0]->text().isEmpty() || !fields[1]->text().isEmpty())
        return QString();
    focusField(fields[0]);
    return tr("Fill at least one dns parameter and try again");
}

QString NetworkPage::refusal() const
{
    QString reason;
    if (wiredIsStatic())
        reason = addressRefusal(*m_ui->ethernetEditor, tr("Ethernet"),
                                tr("Fill all ethernet parametrs and try again"));
    const bool dnsIsStatic = m_ui->dnsStaticRadioButton->isChecked();
    if (reason.isEmpty() && dnsIsStatic)
        reason = dnsRefusal();
    if (reason.isEmpty() && !dnsIsStatic && allInterfacesStatic())
        reason = tr("You have configured the DNS to obtain the configuration form DHCP server, while all "
                    "enabled network interfaces\nuse static configuration.\n\nDNS configuration can only be "
                    "obtained from DHCP, when Ethernet or WiFi are also configured to use DHCP.");
    if (reason.isEmpty() && wirelessIsStatic())
        reason = addressRefusal(*m_ui->wifiEditor, tr("WiFi"), tr("Fill all WiFi parameters and try again"));
    return reason;
}

void NetworkPage::save(QJsonObject &root)
{
    QJsonObject network = member(root, Key::network);
    saveNetworkTab(network);
    root.insert(Key::network, network);
}

void NetworkPage::saveNetworkTab(QJsonObject &network)
{
    QJsonObject interfaces = member(network, Key::interfaces);
    QJsonObject eth = member(interfaces, Key::eth);
    QJsonObject wlan = member(interfaces, Key::wlan);
    m_ui->ethernetEditor->save(eth, m_ui->ethernetCheckBox->isChecked());
    m_ui->wifiEditor->save(wlan, m_ui->wifiCheckBox->isChecked());
    const WifiItem chosen = m_wifi->chosen();
    if (chosen.essid().isEmpty())
        wlan.insert(Key::ssid, QString());
    else
        WifiSettings::write(chosen, wlan);
    interfaces.insert(Key::eth, eth);
    interfaces.insert(Key::wlan, wlan);
    network.insert(Key::interfaces, interfaces);
    network.insert(Key::dns, savedDns(member(network, Key::dns)));
    network.insert(Key::proxy, savedProxy(member(network, Key::proxy)));
    updateIndicators();
}

QJsonObject NetworkPage::savedDns(QJsonObject dns) const
{
    const bool isStatic = m_ui->dnsStaticRadioButton->isChecked();
    dns.insert(Key::type, isStatic ? fixed : dhcp);
    dns.insert(Key::dns1, isStatic ? m_ui->dns1LineEdit->text() : QString());
    dns.insert(Key::dns2, isStatic ? m_ui->dns2LineEdit->text() : QString());
    dns.insert(Key::domain, m_ui->domainLineEdit->text());
    return dns;
}

QJsonObject NetworkPage::savedProxy(QJsonObject proxy) const
{
    proxy.insert(Key::enabled, m_ui->proxyCheckBox->isChecked());
    proxy.insert(Key::address, m_ui->proxyAddressLineEdit->text().trimmed());
    proxy.insert(Key::port, m_ui->proxyPortSpinBox->value());
    proxy.insert(Key::userName, m_ui->proxyUserLineEdit->text());
    proxy.insert(Key::password, m_ui->proxyPasswordLineEdit->text());
    proxy.insert(Key::noProxyForLan, m_ui->proxyLanCheckBox->isChecked());
    return proxy;
}

void NetworkPage::updateIndicators()
{
    m_ui->ethernetIndicatorLabel->setPixmap(m_ui->ethernetCheckBox->isChecked() ? m_ethernetImage : red);
    m_ui->wifiIndicatorLabel->setPixmap(m_ui->wifiCheckBox->isChecked() ? m_wifiImage : red);
}

void NetworkPage::showEthernetIndicator(const QString &image)
{
    m_ethernetImage = image;
    updateIndicators();
}

void NetworkPage::showWifiIndicator(const QString &image)
{
    m_wifiImage = image;
    updateIndicators();
}

void NetworkPage::showEthernetAddress(const QString &text, bool enabled)
{
    m_ui->ethernetAddressLabel->setText(text);
    m_ui->ethernetAddressLabel->setEnabled(enabled);
}

void NetworkPage::showWifiAddress(const QString &text, bool enabled)
{
    m_ui->wifiAddressLabel->setText(text);
    m_ui->wifiAddressLabel->setEnabled(enabled);
}

void NetworkPage::turnOffWifi()
{
    const QSignalBlocker quiet(m_ui->wifiCheckBox);
    m_ui->wifiCheckBox->setChecked(false);
    updateFields();
    updateIndicators();
}
