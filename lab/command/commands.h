// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

/// The sub-commands of kt-lab. Each parses the command line and returns the exit status.
int makeRootCommand();
int cableCommand();
int wifiCommand();
int usbCommand();
int faultCommand();
int messageCommand();
int callsCommand();
int documentCommand();
int corvidServerCommand();
int brokerCommand();
int qmdServerCommand();
int qmdQueueCommand();
int firmwareServerCommand();
int linkCommand();
