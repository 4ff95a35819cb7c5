# SPDX-FileCopyrightText: 2026 The KT964 launcher authors
# SPDX-License-Identifier: Apache-2.0

"""A viewer of one of the machine's screens that does one thing: it asks for a size. QEMU plugs the monitor in or out."""

import socket
import struct


def ask_for_size(path, width, height):
    connection = socket.socket(socket.AF_UNIX)
    connection.settimeout(30)
    connection.connect(path)

    def receive(count):
        data = b""
        while len(data) < count:
            part = connection.recv(count - len(data))
            if not part:
                raise OSError("the viewer's connection ended")
            data += part
        return data
    connection.sendall(receive(12))  # the version
    receive(receive(1)[0])
    connection.sendall(b"\x01")  # no password
    receive(4)
    connection.sendall(b"\x01")  # shared
    name_length = struct.unpack(">20xI", receive(24))[0]
    receive(name_length)
    connection.sendall(struct.pack(">BxHii", 2, 2, 0, -308))  # this viewer knows raw pictures and changes of size
    screens = struct.pack(">IHHHHI", 0, 0, 0, width, height, 0)
    connection.sendall(struct.pack(">BxHHBx", 251, width, height, 1) + screens)
    connection.settimeout(2)
    try:
        while connection.recv(65536):  # QEMU reads the request before it ends the connection
            pass
    except TimeoutError:
        pass
    connection.close()
