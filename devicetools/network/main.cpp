// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#include "devicetools/tool.h"
#include "network-tools/tools.h"

int main(int argc, char **argv)
{
    return Tool::main(
        argc, argv,
        {{"kt-network-config", "SUB-COMMAND A [DOCUMENT]",
          "Configures, connects and queries eth0 and wlan0. Sub-commands:\n"
          "  set-config, autoconnect (with DOCUMENT, the configuration document)\n"
          "  connect-ethernet, disconnect-ethernet, turn-on-wired, turn-off-wired, disconnect-wifi\n"
          "  is-wired-linked, is-wired-on, is-wired-connected, is-wireless-connected\n"
          "  check-wireless-point, get-eth0-parameters, get-wlan0-parameters, get-wifi-list\n",
          27, runNetworkConfig},
         {"kt-ip-settings", "-a|-d eth0|wlan0 ADDRESS PREFIX-LENGTH [BROADCAST]",
          "Takes the address off an interface (-d) or brings it back (-a).\n", 27, runIpSettings},
         {"kt-check-gateway", "", "Makes sure that the interface with an address has its default route.\n",
          27, runCheckGateway},
         {"kt-check-wifi", "SSID KEY 0|1",
          "Joins a Wi-Fi network, an open one with an empty KEY; 1: the network is hidden. The last line "
          "says\n"
          "\"connected\", \"incorrect key\" or \"network not found\".\n",
          45, runCheckWifi},
         {"kt-enterprise-wifi", "SSID USER METHOD ENCRYPTION SECURITY 0|1 CA CLIENT PASSWORD CLIENT-PASSWORD",
          "Joins an 802.1x network; METHOD: peap, ttls or tls; ENCRYPTION: auto, tkip or ccmp; SECURITY: "
          "auto,\n"
          "wpa or wpa2; CA: a file in /var/lib/kt964/certificates/cacerts or empty; CLIENT: a file in\n"
          "/var/lib/kt964/certificates. The last line is one of kt-check-wifi's, or \"certificate\n"
          "verification failed\".\n",
          45, runEnterpriseWifi}});
}
