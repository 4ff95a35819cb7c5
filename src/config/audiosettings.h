// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "device/audiodevice.h"

#include <QJsonObject>

/// The "audio settings" of a document. Missing values and values of another type read as empty.
namespace AudioSettings {

/// The user's choice, whether or not the device is present.
AudioChoice checked(const QJsonObject &audio, AudioDirection direction);
/// The device that sessions use.
AudioChoice inUse(const QJsonObject &audio, AudioDirection direction);
QStringList priority(const QJsonObject &audio, AudioDirection direction);
bool toolbarIcon(const QJsonObject &audio);

/// Does not write an empty choice.
void setChecked(QJsonObject &audio, AudioDirection direction, const AudioChoice &choice);
void setInUse(QJsonObject &audio, AudioDirection direction, const AudioChoice &device);
void setPriority(QJsonObject &audio, AudioDirection direction, const QStringList &priority);

} // namespace AudioSettings
