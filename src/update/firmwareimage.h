// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QTemporaryFile>

#include <memory>

/// The one place where a firmware image appears, whole or not at all: what arrives is written beside it, and
/// takes its name when it is complete and on the disk.
namespace FirmwareImage {

/// A new, empty file on the disk of the image, open for reading and writing. Nothing when it cannot be made.
/// It goes with its object.
std::unique_ptr<QTemporaryFile> stage();

/// Appends what has arrived, and sees to it that it goes on to the disk meanwhile: however large the file is,
/// little is left to wait for at its end. False when it cannot be written.
bool append(QTemporaryFile &file, const QByteArray &bytes);

/// Whether so many bytes more have room. An image of an earlier update makes way where that helps.
bool fits(qint64 bytes);

/// Gives the complete file the image's name, in the place of an earlier one. False, with a line in the log
/// and the name as it was, when that fails.
bool place(QTemporaryFile &file);

/// A tool is about to write the image itself: an earlier one goes, and until `closeToTool` whatever stands
/// under the name is known to be unfinished, also after a restart.
bool openToTool();
/// The tool has ended. False when it has left no image; what it left unfinished goes.
bool closeToTool(bool succeeded);

/// Removes what an update left behind that was cut off with the program.
void removeStale();

} // namespace FirmwareImage
