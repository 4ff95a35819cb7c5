// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QString>

// A device root: the folder that stands for "/" of the device, with the lab's own files in its folder "lab".
class DeviceRoot
{
public:
    explicit DeviceRoot(const QString &path);

    // The root that a stand-in belongs to: KT_DEVICE_ROOT, else the folder above the stand-in that holds
    // lab/state.
    static DeviceRoot ofTool(const QString &invokedAs);

    bool isValid() const;
    QString path() const { return m_path; }

    // A path of the device, as a path of this machine. A path that already lies inside the root stays as it
    // is.
    QString file(const QString &devicePath) const;
    QString labFile(const QString &name) const;

    // One fact about the device: the text of lab/state/NAME without surrounding blanks, empty when there is
    // none.
    QString state(const QString &name) const;
    bool setState(const QString &name, const QString &value) const;

private:
    QString m_path;
};
