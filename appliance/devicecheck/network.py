# SPDX-FileCopyrightText: 2026 The KT964 launcher authors
# SPDX-License-Identifier: Apache-2.0

"""What stands around the machine: its cable's other end, and the lab's peers there. All of it is in a network namespace."""

import os
import socket
import struct
import subprocess
import threading
import time

from machine import Failed, await_true

DEVICE = "10.77.0.10"
SERVERS = ("10.77.0.21", "10.77.0.22", "10.77.0.23", "10.77.0.24")
NAMES = {"10.77.0.21": "Ward 3 Office", "10.77.0.22": "Reception"}


def serve_time(address):
    """A time server. Debian's ones would take the place of the one that keeps this machine's clock."""
    server = socket.socket(socket.AF_INET, socket.SOCK_DGRAM)
    server.bind((address, 123))
    while True:
        request, client = server.recvfrom(512)
        if len(request) >= 48:
            now = int((time.time() + 2208988800) * 2**32).to_bytes(8, "big")
            # Version 4, server, stratum 2; the reference is this server's own clock.
            head = struct.pack(">BBbbII4s", 0x24, 2, 6, -20, 0, 65, socket.inet_aton(address))
            server.sendto(head + now + request[40:48] + now + now, client)


class Network:
    def __init__(self, top, binaries, folder):
        self.top, self.binaries, self.folder = top, binaries, folder
        os.makedirs(f"{folder}/firmware", exist_ok=True)
        # A machine that goes on from a snapshot knows the peers' hardware address.
        for line in ("link set lo up", "tuntap add lab0 mode tap", "link set lab0 address 52:54:00:00:09:01", "addr add 10.77.0.1/24 brd + dev lab0",
                     *(f"addr add {server}/32 dev lab0" for server in SERVERS), "link set lab0 up"):
            subprocess.run(["ip", *line.split()], check=True)
        with open(f"{folder}/firmware/kt964-1.2.0.img", "w", encoding="ascii") as image:
            image.write("KT964 firmware 1.2.0\n" + "x" * 2_000_000)

    def start(self, name, *command, ready=None):
        """Starts a peer, which ends with us. `ready`: what it prints when it can be used."""
        with open(f"{self.folder}/{name}.log", "w", encoding="utf-8") as log:
            process = subprocess.Popen(["setpriv", "--pdeathsig", "TERM", *command], stdout=log,
                                       stderr=subprocess.STDOUT, stdin=subprocess.DEVNULL)

        def is_ready():
            if process.poll() is not None:
                raise Failed(f"{name} ended, see {log.name}")
            return ready is None or ready in self.log(name)
        await_true(30, f"{name} starts", is_ready)
        return process

    def log(self, name):
        with open(f"{self.folder}/{name}.log", encoding="utf-8", errors="replace") as log:
            return log.read()

    def start_peers(self):
        def lab(name, *words):
            self.start(name, f"{self.binaries}/kt-lab", name, *words, ready="ready\n")
        self.start("dhcp", "dnsmasq", "--no-daemon", "--conf-file=/dev/null", "--log-dhcp", "--interface=lab0", "--bind-interfaces", "--except-interface=lo",
                   "--no-hosts", "--no-resolv", "--no-ping", "--domain=lab", "--pid-file=",
                   f"--dhcp-leasefile={self.folder}/leases", "--dhcp-range=10.77.0.100,10.77.0.120,255.255.255.0,1h",
                   f"--dhcp-host=52:54:00:00:09:64,{DEVICE}", "--dhcp-option-force=224,http://10.77.0.21",
                   "--address=/ward3.lab/10.77.0.21", "--address=/reception.lab/10.77.0.22", ready="started, version")
        threading.Thread(target=serve_time, args=("10.77.0.24",), daemon=True).start()
        lab("corvid-server", "--address", ",".join(NAMES), *(f"--name={name}" for name in NAMES.values()),
            "--files", f"{self.folder}/firmware", *["--firmware=1.2.0=kt964-1.2.0.img"] * len(NAMES))
        lab("broker", "--address", "10.77.0.21", "--user", "nurse:nurse:Reception=10.77.0.22")
        lab("firmware-server", "--address", "10.77.0.21", f"{self.folder}/firmware")
        self.start("ftp", f"{self.top}/lab/ftp-server", f"{self.folder}/firmware", "10.77.0.23", ready="ready\n")
        os.environ["KT_LAB_DESKTOP_SIZE"] = "1024x768"
        self.start("desktop", f"{self.top}/lab/desktop", f"{self.folder}/desktop", "Reception", "10.77.0.22", ready="ready\n")

    def console(self, *words, document=None):
        """Runs the management console and returns what it prints."""
        result = subprocess.run([f"{self.binaries}/kt-console", *words], input=document, text=True,
                                capture_output=True, timeout=120, check=False)
        if result.returncode != 0:
            raise Failed(f"kt-console {' '.join(words)}: status {result.returncode}: {result.stdout}{result.stderr}")
        return result.stdout

    def desktop_picture(self, file):
        with open(f"{self.folder}/desktop/display", encoding="ascii") as display:
            subprocess.run(["import", "-display", f":{display.read().strip()}", "-window", "root", file], check=True)
        return file
