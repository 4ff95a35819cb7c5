// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

/// The properties of one network interface. Addresses are dotted IPv4 text, empty if unknown.
class NetworkProperty
{
public:
    NetworkProperty() = default;
    NetworkProperty(const QString &ip, const QString &netmask, const QString &gateway, const QString &dns1,
                    const QString &dns2, bool useStaticDns)
        : m_ip(ip)
        , m_netmask(netmask)
        , m_gateway(gateway)
        , m_dns1(dns1)
        , m_dns2(dns2)
        , m_useStaticDns(useStaticDns)
    { }

    QString ip() const { return m_ip; }
    void setIp(const QString &ip) { m_ip = ip; }
    QString netmask() const { return m_netmask; }
    void setNetmask(const QString &netmask) { m_netmask = netmask; }
    QString gateway() const { return m_gateway; }
    void setGateway(const QString &gateway) { m_gateway = gateway; }
    QString dns1() const { return m_dns1; }
    void setDns1(const QString &dns1) { m_dns1 = dns1; }
    QString dns2() const { return m_dns2; }
    void setDns2(const QString &dns2) { m_dns2 = dns2; }
    QString domain() const { return m_domain; }
    void setDomain(const QString &domain) { m_domain = domain; }
    bool isUseStaticDns() const { return m_useStaticDns; }
    void setUseStaticDns(bool useStaticDns) { m_useStaticDns = useStaticDns; }
    QString mac() const { return m_mac; } ///< colon-separated hexadecimal
    void setMac(const QString &mac) { m_mac = mac; }
    QString essid() const { return m_essid; } ///< the associated Wi-Fi network; empty if there is none
    void setEssid(const QString &essid) { m_essid = essid; }
    QString signalQuality() const { return m_signalQuality; } ///< a percentage, as text
    void setSignalQuality(const QString &signalQuality) { m_signalQuality = signalQuality; }
    QString broadcast() const { return m_broadcast; }
    void setBroadcast(const QString &broadcast) { m_broadcast = broadcast; }
    int prefixLength() const { return m_prefixLength; }
    void setPrefixLength(int prefixLength) { m_prefixLength = prefixLength; }
    QString typeIp() const { return m_typeIp; } ///< "dhcp" or "static", as the network tool reports it
    void setTypeIp(const QString &typeIp) { m_typeIp = typeIp; }

private:
    QString m_ip, m_netmask, m_gateway, m_dns1, m_dns2, m_domain;
    bool m_useStaticDns = false;
    QString m_mac, m_essid, m_signalQuality, m_broadcast;
    int m_prefixLength = 0;
    QString m_typeIp;
};
