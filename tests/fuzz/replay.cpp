// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

// fuzz_TARGET FOLDER...: gives a target every kept input once, where there is no fuzzing engine.

#include "target.h"

#include <QDir>
#include <QFile>

int main(int argc, char **argv)
{
    int inputs = 0;
    for (int i = 1; i < argc; ++i) {
        const QDir folder(QFile::decodeName(argv[i]));
        for (const QString &name : folder.entryList(QDir::Files)) {
            QFile file(folder.filePath(name));
            if (!file.open(QIODevice::ReadOnly))
                return EXIT_FAILURE;
            const QByteArray input = file.readAll();
            std::fprintf(stderr, "%s\n", qPrintable(name));
            LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t *>(input.constData()),
                                   static_cast<std::size_t>(input.size()));
            ++inputs;
        }
    }
    return inputs > 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
