// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QFile>
#include <QTemporaryDir>

// A folder with a stand-in xfreerdp, first in PATH for this process and its children. It leaves its
// arguments, its standard input and its process id beside itself, then runs a line of shell.
class StandIn
{
public:
    explicit StandIn(const QByteArray &behaviour)
    {
        qputenv("PATH", m_folder.path().toLocal8Bit() + ":/usr/bin:/bin");
        QFile script(path("xfreerdp"));
        if (!behaviour.isNull() && script.open(QIODevice::WriteOnly)) {
            script.write(
                "#!/bin/sh\ncd \"$(dirname \"$0\")\" && printf '%s\\n' \"$@\" > arguments && cat > input\n"
                "echo \"$ALSA_CONFIG_PATH\" > alsa; echo $$ > pid.new && mv pid.new pid\n");
            script.write(behaviour + '\n');
            script.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        }
    }

    QString path(const char *name) const { return m_folder.filePath(QLatin1String(name)); }
    bool has(const char *name) const { return QFile::exists(path(name)); }

    QByteArray read(const char *name) const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    bool write(const char *name, const QByteArray &content) const
    {
        QFile file(path(name));
        return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
    }

private:
    QTemporaryDir m_folder;
};
