# SPDX-FileCopyrightText: 2026 The KT964 launcher authors
# SPDX-License-Identifier: Apache-2.0

"""What is done to the machine, and what has to be seen there. Each scenario finds the launcher on the screen."""

import json
import os
import re
import subprocess

import contract
from machine import Failed, await_true
from network import DEVICE

ALL = {}
DOCUMENT = "/var/lib/kt964/config.json"
SESSION = "DISPLAY=:0 XAUTHORITY=/run/kt964/Xauthority"
EVIDENCE = f"""systemctl status kt964 kt964-display --no-pager; journalctl -b --no-pager -n 3000 | grep -v qemu-ga | tail -500; nmcli; ip address; ip route
cat /etc/resolv.conf; {SESSION} xrandr; timedatectl; ps ax; cat {DOCUMENT} /tmp/connect.json.status"""


def scenario(name, **options):
    def add(function):
        ALL[name] = (function, options)
        return function
    return add


# Steps that several scenarios take.

def launcher_up(check, seconds=60):
    """The unit is active as soon as the launcher has painted its window."""
    check.machine.becomes(seconds, "the launcher is up", "systemctl is-active kt964 && pgrep -x -u kt964 kt964")


def pid(check):
    return check.machine.run("pgrep -x -u kt964 kt964").split()[0]


def new_launcher(check, old, seconds):
    def is_new():
        return check.machine.true(f"systemctl is-active kt964 && pgrep -x -u kt964 kt964 | grep -vx {old}")
    await_true(seconds, "a new launcher is up", is_new)


def document(check):
    return json.loads(check.machine.run(f"cat {DOCUMENT}"))


def merge(check, change, address=DEVICE):
    """Has the management console change the device's document."""
    check.network.console("set-config", "-", address, "--timeout", "10", document=json.dumps(change))


def interfaces(check, address=DEVICE, **change):
    merge(check, {"network settings": {"interfaces": change}}, address)


def has_address(check, address, seconds=60, interface="eth0"):
    check.machine.becomes(seconds, f"{interface} has {address}", f"ip -4 address show {interface} | grep -q 'inet {address}/'")


def open_page(check, row):
    """Opens a settings page by its row in the list."""
    machine = check.machine
    launcher = machine.screen(f"{check.name}-launcher")
    machine.click(936, 32)
    await_true(60, "the settings open", lambda: not alike(launcher, machine.screen(f"{check.name}-settings"), 0.05))
    machine.click(100, 93 + 36 * row)


def apply(check):
    check.machine.click(928, 724)


def alike(first, second, most=0.15):
    """Whether two pictures show the same, seen from far away."""
    command = ["compare", "-metric", "RMSE", "(", first, "-resize", "64x48!", ")", "(", second, "-resize", "64x48!", ")", "null:"]
    answer = subprocess.run(command, capture_output=True, text=True, check=False).stderr
    return float(re.search(r"\((.*)\)", answer)[1]) < most


# How the machine comes to the launcher.

def boot_plain(check):
    """a plain Debian 12 starts"""
    state = check.machine.run("systemctl is-system-running --wait", 600, check=False).strip()
    check.see(f"Debian {check.machine.run('cat /etc/debian_version').strip()} is {state}")
    check.machine.snapshot("plain")


def install(check):
    """the packages are installed, the machine restarts, and the launcher stands"""
    machine = check.machine
    machine.run("mkdir -p /root/packages")
    for package in check.packages:
        with open(package, "rb") as file:
            machine.agent.write(f"/root/packages/{os.path.basename(package)}", file.read())
    machine.run("DEBIAN_FRONTEND=noninteractive apt-get install --yes /root/packages/*.deb", 900)
    check.see("installed " + ", ".join(machine.run("dpkg-query -W 'kt964*'").split("\n")[:3]).replace("\t", " "))
    restart(check, lambda: machine.run("systemctl --no-block reboot"))
    launcher_up(check, 300)
    has_address(check, DEVICE, 120)
    machine.becomes(60, "the settings are stored", f"test -s {DOCUMENT}")
    check.network.console("info", DEVICE, "--timeout", "20")
    check.see("the launcher stands on the screen", "launcher")
    machine.snapshot("launcher")


def restart(check, action, seconds=180):
    check.machine.forget_events()
    action()
    check.machine.event("RESET", seconds)
    check.machine.agent.synchronize(600)


@scenario("contract")
def tools(check):
    """the tools reply as the lab's stand-ins do"""
    calls, failures = contract.run(Device(check))
    if failures:
        raise Failed(f"{failures} of {calls} calls do not reply as they must")
    check.see(f"{calls} calls reply as the lab's do")


class Device:
    """The machine, as the table of the contract sees it. The tools are called as the launcher's user."""

    name = "device"
    with_launcher = ("display",)

    def __init__(self, check):
        self.check, self.machine = check, check.machine
        air(check, "start")

    def prepare(self, group):
        # The launcher would answer a pulled cable with calls of its own; only the display's tools need its X server.
        self.machine.run(f"systemctl {'start' if group in self.with_launcher else 'stop'} kt964", 120)

    def call(self, words):
        environment = [*SESSION.split(), "PATH=/usr/local/bin:/usr/bin:/bin:/usr/sbin:/sbin", "LC_ALL=C.UTF-8"]
        return self.machine.agent.run(["/usr/sbin/runuser", "-u", "kt964", "--", *words], 60, environment)

    def cable(self, action):
        self.machine.cable(action == "plug")

    def document(self, text):
        change = json.loads(text)
        content = {} if change is None else contract.merged(document(self.check) or {}, change)
        # In one step: the launcher replaces half a document by the defaults.
        self.machine.agent.write(f"{DOCUMENT}.new", json.dumps(content).encode())
        self.machine.run(f"chown kt964: {DOCUMENT}.new && chmod 600 {DOCUMENT}.new && mv {DOCUMENT}.new {DOCUMENT}")

    def certificates(self, _argument):
        store_certificates(self.check)


@scenario("desktop")
def desktop(check):
    """a server is found, and its desktop opened"""
    machine = check.machine
    machine.click(551, 281)
    check.see("the launcher lists the servers", "servers")
    machine.click(840, 663)
    ours, theirs = os.path.join(machine.screens, "desktop-open.png"), os.path.join(machine.screens, "desktop-theirs.png")

    def seen():
        machine.screen("desktop-open")
        check.network.desktop_picture(theirs)
        return alike(ours, theirs)
    await_true(120, "the server's desktop is on the screen", seen)
    check.see("the desktop of Reception is on the screen")
    machine.run("pkill -u kt964 xfreerdp")
    machine.becomes(60, "the session ends", "! pgrep -u kt964 'zClient|xfreerdp'")
    check.see("the launcher is back", "closed")


@scenario("cable")
def cable(check):
    """the cable is pulled and plugged in again"""
    machine = check.machine
    machine.cable(False)
    machine.becomes(60, "the address is taken off", "! ip -4 address show eth0 | grep -q inet")
    check.see("cable out: no address", "out")
    machine.cable(True)
    has_address(check, DEVICE)
    machine.becomes(30, "the route is back", "ip route | grep -q '^default via 10.77.0.1 .*eth0'")
    check.see("cable in: address and route are back", "in")


@scenario("address")
def address(check):
    """DHCP to a static address and back, with gateway and name servers"""
    machine = check.machine
    open_page(check, 6)
    machine.click(474, 253)  # static, and the same for the name servers
    machine.click(474, 497)
    for y, text in ((296, "10.77.0.50"), (342, "255.255.255.0"), (388, "10.77.0.1"), (540, "10.77.0.1"), (586, "10.77.0.24")):
        machine.click(509, y)
        machine.key("ctrl", "a")
        machine.type(text)
    check.see("static is typed into the page", "typed")
    apply(check)
    has_address(check, "10.77.0.50")
    machine.becomes(30, "the gateway", "ip route | grep -q '^default via 10.77.0.1 '")
    check.see("page: 10.77.0.50 with its gateway", "static")
    machine.becomes(60, "the name servers", "grep -q 'nameserver 10.77.0.24' /etc/resolv.conf")
    machine.becomes(30, "a name is found", "getent hosts reception.lab | grep -q 10.77.0.22")
    check.see("static name servers find reception.lab")
    merge(check, {"network settings": {"interfaces": {"eth": {"enabled": True, "type": "dhcp"}}, "DNS": {"type": "dhcp"}}},
          "10.77.0.50")
    has_address(check, DEVICE)
    machine.becomes(30, "the management server", "grep -qx 'qmd_address=\"\\?http://10.77.0.21.*' /tmp/dhcp-options.conf")
    check.see(f"console: DHCP, {DEVICE} again, with the management server's address")


def air(check, action):
    """Brings the access points up or down."""
    machine = check.machine
    if not machine.true("test -e /root/air/air"):
        folder = f"{check.network.folder}/certificates"
        subprocess.run([f"{check.network.top}/appliance/make-certificates", folder], check=True)
        machine.run("mkdir -p /root/air")
        for file in ("hospital-ca.pem", "other-ca.pem", "server.pem", "server.key", "nurse.p12"):
            with open(f"{folder}/{file}", "rb") as content:
                machine.agent.write(f"/root/air/{file}", content.read())
        with open(f"{check.network.top}/appliance/air", "rb") as script:
            machine.agent.write("/root/air/air", script.read())
    machine.run(f"sh /root/air/air {action}", 120)


def store_certificates(check):
    check.machine.run("""cd /var/lib/kt964 && mkdir -p certificates/cacerts && cp /root/air/*-ca.pem certificates/cacerts/ &&
        cp /root/air/nurse.p12 certificates/ && chown -R kt964: certificates""")


@scenario("wifi")
def wifi(check):
    """Wi-Fi: open, personal, enterprise in three ways, a wrong key, an access point that goes away"""
    air(check, "start")
    store_certificates(check)
    machine = check.machine

    def configure(ssid, security, **credentials):
        wlan = {"enabled": True, "type": "dhcp", "ssid": ssid, "security": security, "passphrase": "", "encryption": "auto",
                "advanced security": "auto", "authentication method": "peap", "user name": "", "user password": "",
                "ca certificate": "", "pkcs12 certificate": "", "pkcs12 password": "", "hidden ssid": False}
        interfaces(check, wlan={**wlan, **{key.replace("_", " "): value for key, value in credentials.items()}})

    def joined(ssid):
        machine.becomes(90, f"{ssid} is joined", f"iw dev wlan0 link | grep -qx '.*SSID: {ssid}' && ip -4 a show wlan0 | grep -q 10.77.1.10")
    nurse = {"user_name": "nurse", "user_password": "staff-password", "ca_certificate": "/hospital-ca.pem"}
    networks = (("open", "Visitors", {}), ("personal", "Ward 3", {"passphrase": "ward3-passphrase"}),
                *(("enterprise", "Hospital Staff", {**nurse, "authentication_method": method}) for method in ("peap", "ttls")),
                ("enterprise", "Hospital Staff", {**nurse, "authentication_method": "tls", "pkcs12_certificate": "nurse",
                                                  "pkcs12_password": "nurse-key"}),
                ("personal", "Basement", {"passphrase": "basement-passphrase", "hidden_ssid": True}))
    for security, ssid, credentials in networks:
        configure(ssid, security, **credentials)
        joined(ssid)
        check.see(f"{security} {credentials.get('authentication_method', '')}: joined {ssid}")
    check.see("the launcher shows it", "joined")
    configure("Ward 3", "personal", passphrase="wrong-passphrase")
    machine.becomes(90, "a wrong key does not join", "! iw dev wlan0 link | grep -q SSID")
    check.see("wrong key: not joined")
    configure("Ward 3", "personal", passphrase="ward3-passphrase")
    joined("Ward 3")
    air(check, "stop")
    machine.becomes(90, "the access point is missed", "! iw dev wlan0 link | grep -q SSID")
    check.see("access point gone: no link", "gone")
    air(check, "start")
    joined("Ward 3")
    check.see("access point back: joined again")


@scenario("display")
def display(check):
    """resolution up and down, a second display, blanking"""
    machine = check.machine

    def mode(expected):
        machine.becomes(60, f"the mode {expected}", f"{SESSION} xrandr | grep -q 'current {expected},'", user="kt964")
    open_page(check, 4)
    machine.becomes(60, "the page has the monitor's modes", "journalctl -b -u kt964 --since=-30s | grep -q 'resolution: .* modes'")
    machine.click(727, 190)
    machine.type("1280x960")
    machine.key("ret")
    apply(check)
    mode("1280 x 960")
    check.see("page: 1280x960", "1280x960")
    for name, expected in (("1920x1080 60Hz", "1920 x 1080"), ("1024x768 60Hz", "1024 x 768")):
        merge(check, {"display settings": {"primary": {"resolution": name}}})
        mode(expected)
        check.see(f"console: {name}", name.split()[0])
    second_display(check, 1024, 768)
    machine.becomes(60, "the second display is on", f"{SESSION} xrandr --listactivemonitors | grep -q 'Monitors: 2'", user="kt964")
    check.see("second display: on", "with-second")
    machine.screen("display-second", 1)
    second_display(check, 0, 0)
    machine.becomes(60, "the second display is off", f"{SESSION} xrandr --listactivemonitors | grep -q 'Monitors: 1'", user="kt964")
    check.see("second display: off again")
    merge(check, {"display settings": {"screen saver timeout": 1}})
    machine.becomes(60, "the time-out is set", f"{SESSION} xset q | grep -qE 'timeout: +60 |Standby: 60 '", user="kt964")
    machine.becomes(120, "the screen is blanked", f"{SESSION} xset q | grep -qE 'Monitor is (Off|in Standby|in Suspend)'", user="kt964")
    check.see("blanked after a minute", "blank")
    machine.click(400, 700)
    machine.becomes(20, "a key lights the screen", f"{SESSION} xset q | grep -q 'Monitor is On'", user="kt964")


def second_display(check, width, height):
    """Plugs a second monitor in, or pulls it (0 x 0): a viewer of the second head asks for its size."""
    from vnc import ask_for_size
    ask_for_size(os.path.join(check.machine.folder, "vnc1"), width, height)


@scenario("sound")
def sound(check):
    """a USB sound device is plugged in and chosen, and pulled"""
    machine = check.machine
    machine.plug("usb-audio", "headset", audiodev="silence")
    machine.becomes(30, "ALSA knows the device", "grep -q 'USB-Audio' /proc/asound/cards")
    check.see("USB sound device plugged in: " + machine.run("cut -d: -f2- /proc/asound/cards | grep -o '\\S.*' | paste -sd,").strip())
    machine.becomes(30, "the launcher was told", "grep -q 'refresh audio' /tmp/msg.json")
    machine.click(804, 32)
    check.see("the menu of outputs", "menu")
    machine.click(655, 201)  # behind "Off" and the card on the board

    def chosen():
        device = document(check)["audio settings"].get("output device", {})
        return device.get("device number", "").startswith("1,") and device
    check.see("chosen: {device name} {device number}".format(**await_true(20, "the USB device is chosen", chosen)))
    machine.unplug("headset")
    machine.becomes(30, "the device is gone", "! grep -q 'USB-Audio' /proc/asound/cards")
    check.see("unplugged", "unplugged")


@scenario("usb")
def usb(check):
    """a USB device is listed, and no longer after it was unplugged"""
    machine = check.machine
    open_page(check, 10)

    def refreshed(name):
        machine.click(720, 426)
        return machine.screen(name)
    await_true(30, "the list is filled", lambda: alike(refreshed("usb-page"), refreshed("usb-before"), 0.0001))
    before = refreshed("usb-before")
    machine.plug("usb-ccid", "reader")
    machine.becomes(30, "the kernel knows the reader", "lsusb -d 08e6:4433")
    listed = await_true(30, "the reader is listed", lambda: not alike(before, refreshed("usb-listed"), 0.001) and "usb-listed")
    check.see("the smart card reader is listed", listed)
    machine.unplug("reader")
    await_true(30, "the reader is listed no longer", lambda: alike(before, refreshed("usb-unplugged"), 0.001))
    check.see("unplugged: listed no longer")


@scenario("stick")
def stick(check):
    """a USB stick is mounted for the launcher, which can write to it, and forgotten when it is pulled"""
    machine = check.machine
    image = os.path.join(machine.folder, "stick.img")
    subprocess.run(["mkfs.vfat", "-C", "-n", "WARD 3", image, "16384"], check=True, stdout=subprocess.DEVNULL)
    machine.monitor.request("blockdev-add", **{"node-name": "stick", "driver": "raw",
                                               "file": {"driver": "file", "filename": image}})
    machine.plug("usb-storage", "stick-device", drive="stick")
    machine.becomes(60, "the stick is mounted", "findmnt /media/WARD_3")
    machine.run("nsenter --mount --target $(pidof -s kt964) runuser -u kt964 -- touch /media/WARD_3/from-launcher")
    check.see("a USB stick is mounted, and the launcher writes to it: " + machine.run("findmnt -no OPTIONS /media/WARD_3").strip())
    machine.unplug("stick-device")
    machine.becomes(30, "the stick is forgotten", "! findmnt /media/WARD_3 && ! test -e /media/WARD_3")
    check.see("unplugged: nothing is left of it")


@scenario("system")
def system(check):
    """keyboard layout, time zone, NTP, clock, and host name, from the pages and from the console"""
    machine = check.machine
    open_page(check, 0)
    machine.click(727, 191)
    machine.key("ctrl", "a")
    machine.type("ward-9")
    apply(check)
    machine.becomes(60, "the host name", "test \"$(hostname)\" = ward-9")
    check.see("page: the host name is ward-9")
    merge(check, {"general settings": {"device name": "ward-10"}})
    machine.becomes(60, "the host name", "test \"$(hostname)\" = ward-10 && grep -qx ward-10 /etc/hostname")
    check.see("console: the host name is ward-10")
    open_page(check, 7)
    machine.click(727, 190)
    machine.type("german")
    machine.key("ret")
    apply(check)
    machine.becomes(60, "the layout", f"{SESSION} setxkbmap -query | grep -q 'layout: *de'", user="kt964")
    check.see("page: German keyboard", "keyboard")
    machine.run("date -s '2020-01-01 12:00:00'")
    merge(check, {"date time settings": {"ntp enabled": True, "ntp server": "10.77.0.24", "timezone": "Europe/Berlin"}})
    machine.becomes(60, "the time zone", "readlink -f /etc/localtime | grep -q Europe/Berlin")
    machine.becomes(120, "the clock follows the server", "test $(date +%Y) -gt 2025")
    check.see("console: Europe/Berlin, and the clock follows the time server")
    open_page(check, 8)
    machine.click(300, 300)
    machine.click(730, 387)
    apply(check)
    machine.becomes(60, "the synchroniser is off", "timedatectl show -p NTP --value | grep -qx no")
    check.see("page: no time server", "time")


# The display that has two outputs does not live through a sleep, so this machine has another one.
@scenario("power", snapshot=None, cold_from="launcher", graphics="VGA,id=gpu,addr=3,edid=on,xres=1024,yres=768")
def power(check):
    """sleep, restart and power off from the launcher's menu"""
    machine = check.machine

    def menu(y):
        machine.click(981, 32)
        machine.click(930, y)
    launcher_up(check, 300)
    old = pid(check)
    machine.forget_events()
    menu(73)
    machine.event("SUSPEND", 60)
    machine.monitor.request("system_wakeup")
    machine.agent.synchronize(120)
    if pid(check) != old:
        raise Failed("the launcher did not live through the sleep")
    check.see("asleep, and awake with the same launcher", "awake")

    def press_reboot():
        menu(114)
        check.see("asked before restarting", "question")
        machine.key("ret")
    restart(check, press_reboot)
    launcher_up(check, 300)
    check.see("restarted to the launcher", "restarted")
    machine.forget_events()
    menu(155)
    machine.key("ret")
    machine.event("SHUTDOWN", 180)
    check.see("powered off")


@scenario("faults")
def faults(check):
    """kill -9, a hang, and the X server's death"""
    machine = check.machine
    for name, action, seconds in (("kill -9", "kill -KILL {}", 30), ("a hang", "kill -STOP {}", 90),
                                  ("the X server's death", "pkill -KILL -x Xorg", 60)):
        old = pid(check)
        machine.run(action.format(old))
        new_launcher(check, old, seconds)
        children = machine.run("ps -u kt964 -o pid=,comm=").split("\n")
        check.see(f"{name}: a new launcher, {len(children) - 1} processes of its user", name.split()[-1])
    machine.becomes(5, "standard output stays out of the journal",
                    "! journalctl -b -u kt964 | grep -qE 'GET JSON|APPEND CHILD'")


@scenario("recovery")
def recovery(check):
    """a crash loop ends on a screen that helps, and a key leads back; no desktop, no desktop mode"""
    machine = check.machine
    refused = machine.run("kt-switch -d 2>&1; echo status $?", user="kt964", check=False)
    if "status 1" not in refused or not machine.true("systemctl is-active kt964"):
        raise Failed(f"desktop mode without a desktop: {refused}")
    check.see("desktop mode without a desktop: " + refused.split("\n")[0])
    machine.run("mv /usr/bin/kt964 /usr/bin/kt964.away && ln -s /bin/false /usr/bin/kt964 && systemctl kill -s KILL kt964")
    machine.becomes(180, "the recovery screen", "systemctl is-active kt964-recovery")
    machine.becomes(30, "the recovery screen waits for a key", "pgrep -u kt964 -x dd")
    check.see("after repeated failures: what to do", "screen")
    machine.run("mv /usr/bin/kt964.away /usr/bin/kt964")
    machine.key("r")
    launcher_up(check, 120)
    check.see("the launcher is back after a key", "back")


@scenario("upgrade")
def upgrade(check):
    """an upgrade and a downgrade keep the settings; only a purge removes them"""
    machine = check.machine
    merge(check, {"general settings": {"device name": "kept"}})
    machine.becomes(30, "the name is stored", f"grep -q '\"kept\"' {DOCUMENT}")
    machine.run("""cd /root/packages && mkdir newer && for deb in *.deb; do rm -rf tree && dpkg-deb -R $deb tree &&
        sed -i 's/^Version: .*/&+newer/; s/\\(kt964[a-z-]* (= [^)]*\\))/\\1+newer)/' tree/DEBIAN/control &&
        dpkg-deb -Znone -b tree newer/$deb || exit 1; done""", 300)
    for what, options in (("newer/*", ""), ("*", "--allow-downgrades")):
        old = pid(check)
        machine.run(f"cd /root/packages && DEBIAN_FRONTEND=noninteractive apt-get install --yes {options} ./{what}.deb", 600)
        launcher_up(check)
        if not machine.true(f"grep -q '\"kept\"' {DOCUMENT}"):
            raise Failed("the document did not survive")
        check.see(f"{'downgraded' if options else 'upgraded'}, document kept, launcher {'restarted' if pid(check) != old else 'kept'}")
    machine.run("DEBIAN_FRONTEND=noninteractive apt-get remove --yes 'kt964*'", 600)
    machine.becomes(5, "the document survives the removal", f"test -e {DOCUMENT} && ! test -e /usr/bin/kt964")
    machine.run("DEBIAN_FRONTEND=noninteractive apt-get purge --yes 'kt964*'", 600)
    left = machine.run("find / -xdev \\( -name '*kt964*' -o -path '*Tessaro*' \\) -not -path '/proc/*' -not -path '/root/*' "
                       "-not -path '/var/log/journal/*' 2>/dev/null", 120, check=False).split()
    check.see(f"purged; left: {' '.join(left) or 'nothing'}")
