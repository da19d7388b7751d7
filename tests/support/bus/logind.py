"""The mock of logind that python3-dbusmock has, with a word when it is ready."""

import os

import dbus
import dbus.bus
import dbusmock
from dbus.mainloop.glib import DBusGMainLoop
from gi.repository import GLib

DBusGMainLoop(set_as_default=True)
bus = dbus.bus.BusConnection(os.environ["DBUS_SYSTEM_BUS_ADDRESS"])
name = dbus.service.BusName("org.freedesktop.login1", bus, allow_replacement=True, do_not_queue=True)
manager = dbusmock.mockobject.DBusMockObject(
    name, "/org/freedesktop/login1", "org.freedesktop.login1.Manager", {}, os.devnull)
manager.AddTemplate("logind", {})
print("ready", flush=True)
GLib.MainLoop().run()
