"""A desktop portal with the user's colour preferences. A line "KEY VALUE" on stdin changes one."""

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


def obey(channel, condition):
    key, value = sys.stdin.readline().split(maxsplit=1)
    settings[key] = GLib.Variant.parse(None, value, None, None)
    bus.emit_signal(None, PATH, "org.freedesktop.portal.Settings", "SettingChanged",
                    GLib.Variant("(ssv)", (NAMESPACE, key, settings[key])))
    return True


bus.register_object(PATH, Gio.DBusNodeInfo.new_for_xml(INTERFACE).interfaces[0], answer, None, None)
Gio.bus_own_name_on_connection(bus, "org.freedesktop.portal.Desktop", Gio.BusNameOwnerFlags.NONE, None, None)
GLib.io_add_watch(0, GLib.IO_IN, obey)
print("ready", flush=True)
GLib.MainLoop().run()
