# SPDX-License-Identifier: MIT
"""The status area of a desktop, where programs put their tray icons, for tests without one.

Run as a program it is the watcher that icons register with on the session bus, until it is ended;
it prints the bus name of each icon. `Icon` is the hand that uses one.
"""
from gi.repository import Gio, GLib

WATCHER = "org.kde.StatusNotifierWatcher"
DESCRIPTION = """<node><interface name="%s">
  <method name="RegisterStatusNotifierItem"><arg type="s" direction="in"/></method>
  <property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
  <property name="RegisteredStatusNotifierItems" type="as" access="read"/>
  <property name="ProtocolVersion" type="i" access="read"/>
</interface></node>""" % WATCHER


def watch():
    properties = {"IsStatusNotifierHostRegistered": GLib.Variant("b", True),
                  "RegisteredStatusNotifierItems": GLib.Variant("as", []),
                  "ProtocolVersion": GLib.Variant("i", 0)}

    def on_call(_bus, sender, _path, _interface, _method, _arguments, invocation):
        print(sender, flush=True)
        invocation.return_value(None)

    def on_get(_bus, _sender, _path, _interface, name):
        return properties[name]

    bus = Gio.bus_get_sync(Gio.BusType.SESSION)
    interface = Gio.DBusNodeInfo.new_for_xml(DESCRIPTION).interfaces[0]
    bus.register_object("/StatusNotifierWatcher", interface, on_call, on_get, None)
    Gio.bus_own_name_on_connection(bus, WATCHER, Gio.BusNameOwnerFlags.NONE,
                                   lambda *_: print("ready", flush=True), None)
    GLib.MainLoop().run()


class Icon:
    """A tray icon, by the bus name of its program."""

    def __init__(self, name):
        self.bus = Gio.bus_get_sync(Gio.BusType.SESSION)
        self.name = name
        self.menu = self.call("/StatusNotifierItem", "org.freedesktop.DBus.Properties", "Get",
                              GLib.Variant("(ss)", ("org.kde.StatusNotifierItem", "Menu")))[0]

    def call(self, path, interface, method, arguments):
        return self.bus.call_sync(self.name, path, interface, method, arguments, None,
                                  Gio.DBusCallFlags.NONE, 10000, None).unpack()

    def items(self):
        """The menu's items, number and text; None for the text of a separator."""
        layout = self.call(self.menu, "com.canonical.dbusmenu", "GetLayout",
                           GLib.Variant("(iias)", (0, -1, [])))[1]
        return [(number, None if values.get("type") == "separator" else
                 values["label"].replace("_", "")) for number, values, _ in layout[2]]

    def choose(self, text):
        number = next(number for number, label in self.items() if label == text)
        self.call(self.menu, "com.canonical.dbusmenu", "Event",
                  GLib.Variant("(isvu)", (number, "clicked", GLib.Variant("s", ""), 0)))


if __name__ == "__main__":
    watch()
