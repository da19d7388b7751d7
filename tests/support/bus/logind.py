"""The mock of logind that python3-dbusmock has, with a word when it is ready. "silent": it answers nothing."""

import os
import sys

import dbus
import dbus.bus
import dbus.lowlevel
import dbusmock
from dbus.mainloop.glib import DBusGMainLoop
from gi.repository import GLib

DBusGMainLoop(set_as_default=True)
bus = dbus.bus.BusConnection(os.environ["DBUS_SYSTEM_BUS_ADDRESS"])
name = dbus.service.BusName("org.freedesktop.login1", bus, allow_replacement=True, do_not_queue=True)
manager = dbusmock.mockobject.DBusMockObject(
    name, "/org/freedesktop/login1", "org.freedesktop.login1.Manager", {}, os.devnull)
manager.AddTemplate("logind", {})
if "silent" in sys.argv:
    bus.add_message_filter(lambda _connection, _message: dbus.lowlevel.HANDLER_RESULT_HANDLED)
print("ready", flush=True)
GLib.MainLoop().run()
