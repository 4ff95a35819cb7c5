// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include "services/settingssections.h"

#include <QByteArray>
#include <QMap>

/// What was last carried out of the document: a fingerprint for each section, in a file beside the document.
class AppliedRecord
{
public:
    enum class Condition {
        Usable,
        Useless,    ///< missing, or not a record
        Unreadable, ///< it may be good, but the system cannot read it now
    };

    /// Reads the file, and removes what an interrupted `save` left.
    Condition load();
    /// Writes the file, unless it holds the same already. Where that fails, the next call tries again.
    void save();
    /// Keeps the file as it is from now on: what it says is not known.
    void protect();

    QByteArray fingerprint(SettingsSections::Section section) const;
    void set(SettingsSections::Section section, const QByteArray &fingerprint);

private:
    QMap<SettingsSections::Section, QByteArray> m_fingerprints;
    bool m_saved = false;
    bool m_isProtected = false;
};
