"""A panel that accepts tray items and shows none: it prints the name of each that is registered."""

from gi.repository import Gio, GLib

WATCHER = "org.kde.StatusNotifierWatcher"
INTERFACE = f"""<node><interface name="{WATCHER}">
<method name="RegisterStatusNotifierItem"><arg type="s" direction="in"/></method>
<property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
<signal name="StatusNotifierHostRegistered"/>
</interface></node>"""


def take(connection, sender, path, interface, method, parameters, invocation):
    print(parameters[0], flush=True)
    invocation.return_value(None)


bus = Gio.bus_get_sync(Gio.BusType.SESSION)
bus.register_object("/StatusNotifierWatcher", Gio.DBusNodeInfo.new_for_xml(INTERFACE).interfaces[0], take,
                    lambda *_: GLib.Variant("b", True), None)
Gio.bus_own_name_on_connection(bus, WATCHER, Gio.BusNameOwnerFlags.NONE, None, None)
GLib.MainLoop().run()
