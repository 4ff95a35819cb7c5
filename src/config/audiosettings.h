// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "device/audiodevice.h"

#include <QJsonObject>

/// The "audio settings" of a document. What is missing or of another type reads as nothing.
namespace AudioSettings {

/// What the user has chosen, whether it is there or not.
AudioChoice checked(const QJsonObject &audio, AudioDirection direction);
/// What the sessions use.
AudioChoice inUse(const QJsonObject &audio, AudioDirection direction);
QStringList priority(const QJsonObject &audio, AudioDirection direction);
bool toolbarIcon(const QJsonObject &audio);

/// A choice that was never made is not written.
void setChecked(QJsonObject &audio, AudioDirection direction, const AudioChoice &choice);
void setInUse(QJsonObject &audio, AudioDirection direction, const AudioChoice &device);
void setPriority(QJsonObject &audio, AudioDirection direction, const QStringList &priority);

} // namespace AudioSettings
