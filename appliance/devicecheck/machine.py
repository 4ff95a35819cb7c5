# SPDX-FileCopyrightText: 2026 The KT964 launcher authors
# SPDX-License-Identifier: Apache-2.0

"""The virtual machine, as somebody who stands in front of it has it: keys, pointer, screen, cable, plugs and power."""

import base64
import json
import os
import shlex
import socket
import subprocess
import time


# A busy machine needs more time: the limits of all that is awaited are multiplied by this.
PATIENCE = float(os.environ.get("PATIENCE", "1"))


class Failed(Exception):
    """Something did not happen on the machine. The text tells what was awaited, and what was seen instead."""


def await_true(seconds, text, condition):
    """Waits for a condition, at most this long, and returns its value."""
    end = time.monotonic() + seconds * PATIENCE
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > end:
            raise Failed(f"{text}: not within {seconds} s")
        time.sleep(0.5)


class JsonSocket:
    """Requests and replies in JSON, one per line: QEMU's monitor and the guest's agent speak so."""

    def __init__(self, path):
        self.events = []
        self.socket = socket.socket(socket.AF_UNIX)
        self.socket.connect(path)
        self.buffer = b""

    def send(self, text):
        self.socket.sendall(text.encode() + b"\n")

    def receive(self, seconds):
        """Returns the next message, or None if none arrives in time."""
        self.socket.settimeout(seconds)
        while b"\n" not in self.buffer:
            try:
                part = self.socket.recv(1 << 16)
            except TimeoutError:
                return None
            if not part:
                raise Failed("the machine has ended")
            self.buffer += part
        line, _, self.buffer = self.buffer.partition(b"\n")
        try:
            message = json.loads(line.strip(b"\xff"))
        except ValueError:
            return {}
        return message if isinstance(message, dict) else {}

    def request(self, name, seconds=30, /, **arguments):
        self.send(json.dumps({"execute": name, "arguments": arguments}))
        end = time.monotonic() + seconds * PATIENCE
        while time.monotonic() < end:
            reply = self.receive(max(0.1, end - time.monotonic())) or {}
            if "event" in reply:
                self.events.append(reply["event"])
            elif "error" in reply:
                raise Failed(f"{name}: {reply['error'].get('desc')}")
            elif "return" in reply:
                return reply["return"]
        raise Failed(f"{name}: no reply within {seconds} s")


class Agent(JsonSocket):
    """QEMU's own agent in the guest: runs commands there as root, and writes files."""

    def synchronize(self, seconds):
        """Waits for the agent. Replies to earlier requests are dropped, and so are its complaints about 0xff."""
        end = time.monotonic() + seconds * PATIENCE
        while time.monotonic() < end:
            number = time.monotonic_ns() % 2**31
            self.socket.sendall(b"\xff")
            self.send(json.dumps({"execute": "guest-sync-delimited", "arguments": {"id": number}}))
            while (reply := self.receive(5)) is not None:
                if reply.get("return") == number:
                    return
        raise Failed(f"the machine runs: no reply from it within {seconds} s")

    def run(self, words, seconds=60, environment=(), data=b""):
        """Runs a program in the guest. Returns its status and its output (standard output, then standard error)."""
        pid = self.request("guest-exec", path=words[0], arg=list(words[1:]), env=list(environment),
                           **{"capture-output": True, "input-data": base64.b64encode(data).decode()})["pid"]
        end = time.monotonic() + seconds * PATIENCE
        while time.monotonic() < end:
            state = self.request("guest-exec-status", pid=pid)
            if state["exited"]:
                text = b"".join(base64.b64decode(state.get(key, "")) for key in ("out-data", "err-data"))
                return state.get("exitcode", 128 + state.get("signal", 0)), text.decode(errors="replace")
            time.sleep(0.2)
        raise Failed(f"{shlex.join(words)}: did not end within {seconds} s")

    def write(self, path, content):
        handle = self.request("guest-file-open", path=path, mode="w")
        for start in range(0, len(content), 1 << 20):
            part = base64.b64encode(content[start:start + (1 << 20)]).decode()
            self.request("guest-file-write", 120, handle=handle, **{"buf-b64": part})
        self.request("guest-file-close", handle=handle)


class Machine:
    """One run of the virtual machine. `folder` holds its sockets, its console and its screenshots."""

    width, height = 1024, 768
    hardware = [
        "-machine", "pc", "-accel", "tcg,thread=multi", "-smp", "2", "-m", "1024",
        "-append", "root=/dev/vda rw quiet console=ttyS0 console=tty0",
        "-netdev", "tap,id=cable,ifname=lab0,script=no,downscript=no",
        "-device", "virtio-net-pci,netdev=cable,id=wired,addr=2,mac=52:54:00:00:09:64",
        "-device", "qemu-xhci,id=usb", "-device", "usb-tablet,id=tablet,bus=usb.0,port=1",
        "-audiodev", "none,id=silence", "-device", "intel-hda", "-device", "hda-duplex,audiodev=silence",
        "-device", "virtio-serial", "-device", "virtserialport,chardev=agent,name=org.qemu.guest_agent.0",
    ]
    two_displays = "virtio-vga,id=gpu,addr=3,max_outputs=2,edid=on,xres=1024,yres=768"

    def __init__(self, image, folder, screens):
        self.image, self.folder, self.screens = image, folder, screens
        self.process = None

    # Power.

    def start(self, snapshot=None, cold_from=None, graphics=two_displays):
        """Starts the machine: where a snapshot left it, or switched on (with the disk of one, if it is named)."""
        def path(name):
            return os.path.join(self.folder, name)
        for name in ("qmp", "monitor", "agent", "vnc0", "vnc1"):
            if os.path.exists(path(name)):
                os.unlink(path(name))
        disk = path("disk.qcow2")
        if cold_from:
            subprocess.run(["qemu-img", "snapshot", "-a", cold_from, disk], check=True)
        command = [
            "nice", "-n", "10", "qemu-system-x86_64", "-nodefaults", "-no-user-config", "-name", "kt964", "-no-shutdown",
            "-kernel", f"{self.image}/vmlinuz", "-initrd", f"{self.image}/initrd.img",
            "-drive", f"file={disk},if=virtio,cache=unsafe,discard=unmap", "-display", "none", "-device", graphics,
            *self.hardware, "-serial", f"file:{path('console.log')}",
            "-chardev", f"socket,id=agent,path={path('agent')},server=on,wait=off",
            "-qmp", f"unix:{path('qmp')},server=on,wait=off", "-monitor", f"unix:{path('monitor')},server=on,wait=off",
        ]
        if "max_outputs" in graphics:
            for head in (0, 1):
                command += ["-vnc", f"unix:{path(f'vnc{head}')},display=gpu,head={head},id=screen{head}"]
        if snapshot:
            command += ["-loadvm", snapshot]
        self.process = subprocess.Popen(command, stdin=subprocess.DEVNULL)
        await_true(60, "the machine starts", lambda: os.path.exists(path("agent")) or self.process.poll())
        if self.process.poll() is not None:
            raise Failed("the machine does not start")
        self.monitor = JsonSocket(path("qmp"))
        self.monitor.request("qmp_capabilities", 120)
        self.agent = Agent(path("agent"))
        self.agent.synchronize(600)

    def stop(self):
        if self.process and self.process.poll() is None:
            self.process.kill()
            self.process.wait()

    def snapshot(self, name):
        self.human(f"savevm {name}")

    def human(self, line):
        answer = self.monitor.request("human-monitor-command", 300, **{"command-line": line})
        if answer.strip():
            raise Failed(f"{line}: {answer.strip()}")

    def event(self, name, seconds):
        """Waits for an event of the machine, such as SHUTDOWN, that came after the last call of forget_events."""
        def seen():
            self.monitor.request("query-status")
            return name in self.monitor.events
        await_true(seconds, f"the machine's event {name}", seen)

    def forget_events(self):
        self.monitor.request("query-status")
        self.monitor.events.clear()

    # What a person does.

    def key(self, *names):
        """Presses keys together, by QEMU's names."""
        keys = [{"type": "qcode", "data": name} for name in names]
        self.monitor.request("send-key", keys=keys)
        time.sleep(0.15)  # the keys are released after 100 ms

    def type(self, text):
        names = {" ": "spc", ".": "dot", "-": "minus", "/": "slash", ",": "comma"}
        for letter in text:
            name = names.get(letter, letter.lower())
            self.key(*(["shift", name] if letter.isupper() else [name]))

    def click(self, x, y, size=None):
        width, height = size or (self.width, self.height)
        def send(*events):
            self.monitor.request("input-send-event", events=list(events))
            time.sleep(0.2)
        send({"type": "abs", "data": {"axis": "x", "value": x * 32767 // width}},
             {"type": "abs", "data": {"axis": "y", "value": y * 32767 // height}})
        for down in (True, False):
            send({"type": "btn", "data": {"button": "left", "down": down}})

    def cable(self, plugged):
        self.monitor.request("set_link", name="wired", up=plugged)

    def plug(self, driver, name, **properties):
        self.monitor.request("device_add", driver=driver, id=name, bus="usb.0", **properties)

    def unplug(self, name):
        self.monitor.request("device_del", id=name)

    def screen(self, name, head=0):
        """Takes a screenshot and returns its file."""
        file = os.path.join(self.screens, f"{name}.png")
        self.monitor.request("screendump", filename=file, device="gpu", head=head, format="png")
        return file

    # What an administrator at the machine's shell does.

    def run(self, command, seconds=60, user=None, check=True):
        """Runs a shell command as root, or as this user, and returns its output; fails on a status other than 0."""
        words = ["/bin/sh", "-c", command]
        if user:
            words = ["/usr/sbin/runuser", "-u", user, "--"] + words
        status, output = self.agent.run(words, seconds, ["PATH=/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin",
                                                          "LC_ALL=C.UTF-8"])
        if check and status != 0:
            raise Failed(f"{command}: status {status}: {output.strip()[-400:]}")
        return output

    def true(self, command, **options):
        """Whether a shell command succeeds."""
        return self.run(f"({command}) >/dev/null 2>&1 && echo yes || echo no", **options).strip() == "yes"

    def becomes(self, seconds, text, command, **options):
        """Waits for a shell command to succeed."""
        await_true(seconds, text, lambda: self.true(command, **options))
