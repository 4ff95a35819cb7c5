// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

/// A device root: the folder that stands for "/" of the device. Its folder "lab" holds the lab's own files.
class DeviceRoot
{
public:
    explicit DeviceRoot(const QString &path);

    /// Returns the root of a stand-in: KT_DEVICE_ROOT, or else the folder above the stand-in that holds
    /// lab/state.
    static DeviceRoot ofTool(const QString &invokedAs);

    bool isValid() const;
    QString path() const { return m_path; }

    /// Converts a path of the device to a path of this machine. Returns a path inside the root unchanged.
    QString file(const QString &devicePath) const;
    QString labFile(const QString &name) const;

    /// Returns the trimmed text of lab/state/NAME; empty when the file does not exist.
    QString state(const QString &name) const;
    bool setState(const QString &name, const QString &value) const;

private:
    QString m_path;
};
