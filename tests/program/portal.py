"""A desktop portal with the user's colour preferences. A line "dark", "light" or "accent R G B" on stdin changes them."""

import sys

from gi.repository import Gio, GLib

NAMESPACE = "org.freedesktop.appearance"
INTERFACE = """<node><interface name="org.freedesktop.portal.Settings">
<method name="ReadAll"><arg type="as" direction="in"/><arg type="a{sa{sv}}" direction="out"/></method>
<signal name="SettingChanged"><arg type="s"/><arg type="s"/><arg type="v"/></signal>
</interface></node>"""
PATH = "/org/freedesktop/portal/desktop"

settings = {"color-scheme": GLib.Variant("u", 2)}
bus = Gio.bus_get_sync(Gio.BusType.SESSION)


def answer(connection, sender, path, interface, method, parameters, invocation):
    invocation.return_value(GLib.Variant("(a{sa{sv}})", ({NAMESPACE: settings},)))


def change(key, value):
    settings[key] = value
    bus.emit_signal(None, PATH, "org.freedesktop.portal.Settings", "SettingChanged",
                    GLib.Variant("(ssv)", (NAMESPACE, key, value)))


def obey(channel, condition):
    words = sys.stdin.readline().split()
    if not words:
        loop.quit()
        return False
    if words[0] == "accent":
        change("accent-color", GLib.Variant("(ddd)", tuple(map(float, words[1:]))))
    else:
        change("color-scheme", GLib.Variant("u", {"dark": 1, "light": 2}[words[0]]))
    return True


loop = GLib.MainLoop()
bus.register_object(PATH, Gio.DBusNodeInfo.new_for_xml(INTERFACE).interfaces[0], answer, None, None)
Gio.bus_own_name_on_connection(bus, "org.freedesktop.portal.Desktop", Gio.BusNameOwnerFlags.NONE, None, None)
GLib.io_add_watch(0, GLib.IO_IN | GLib.IO_HUP, obey)
print("ready", flush=True)
loop.run()
