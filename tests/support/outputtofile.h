// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QFile>

#include <cstdio>

#include <unistd.h>

/// Our standard output goes into a file for as long as this lives.
class OutputToFile
{
public:
    explicit OutputToFile(const QString &path)
        : m_file(path)
        , m_terminal(::dup(STDOUT_FILENO))
    {
        std::fflush(stdout);
        if (!m_file.open(QIODevice::WriteOnly) || ::dup2(m_file.handle(), STDOUT_FILENO) < 0)
            qFatal("cannot redirect the standard output");
    }
    ~OutputToFile()
    {
        std::fflush(stdout);
        ::dup2(m_terminal, STDOUT_FILENO);
        ::close(m_terminal);
    }
    OutputToFile(const OutputToFile &) = delete;
    OutputToFile &operator=(const OutputToFile &) = delete;

private:
    QFile m_file;
    int m_terminal;
};
