// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QStringList>

// The tools of this program, by their names. Each returns its exit status.

int runNetworkConfig(const QStringList &arguments);
int runIpSettings(const QStringList &arguments);
int runCheckGateway(const QStringList &arguments);
int runCheckWifi(const QStringList &arguments);
int runEnterpriseWifi(const QStringList &arguments);
