// SPDX-FileCopyrightText: 2026 The KT964 launcher authors
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QTemporaryFile>

#include <memory>

/// The firmware image for the installer. A download is written to a temporary file beside it and is renamed
/// when it is complete and on the disk, so the image is never incomplete.
namespace FirmwareImage {

/// A new, empty file in the image's folder, open for reading and writing; null when it cannot be created. The
/// object removes its file.
std::unique_ptr<QTemporaryFile> stage();

/// Appends received bytes and starts to write them to the disk, so that the final wait is short for a file of
/// any size. False when they cannot be written.
bool append(QTemporaryFile &file, const QByteArray &bytes);

/// Whether the disk has room for that many bytes more, or will have without an earlier image.
bool fits(qint64 bytes);
/// As `fits`, and removes an earlier image if the bytes do not fit beside it. Call when the server has shown
/// that it has the new one.
bool makeRoom(qint64 bytes);

/// Renames the complete file to the image, replacing an earlier one. False, with a line in the log and the
/// earlier image unchanged, when that fails.
bool place(QTemporaryFile &file);

/// Call before a tool writes the image itself. Puts an earlier image aside and marks the new one as
/// unfinished until `finishTool`; the mark survives a restart. So whatever the tool leaves, in the image's
/// place or in its own file beside it (".part"), is removed before anybody takes it for an image.
bool prepareForTool();
/// Call while the tool receives the image. Removes the earlier image when the disk is nearly full.
void makeRoomForTool();
/// Call when the tool has ended. False when there is no complete image; the earlier one then takes the place
/// of an incomplete one.
bool finishTool(bool succeeded);

/// Removes the files of an update that ended with the program.
void removeStale();

} // namespace FirmwareImage
