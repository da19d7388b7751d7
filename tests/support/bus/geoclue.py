"""A location service for tests: GeoClue 2 as far as applications see it, and an object by which a test governs it."""

import os
import time

import dbus
import dbus.bus
import dbus.lowlevel
import dbus.service
from dbus.mainloop.glib import DBusGMainLoop
from gi.repository import GLib

NAME = "org.freedesktop.GeoClue2"
CLIENT = "/org/freedesktop/GeoClue2/Client/1"
PROPERTIES = "org.freedesktop.DBus.Properties"


class Holder(dbus.service.Object):
    """An object with properties."""

    def __init__(self, bus, path, values):
        super().__init__(bus, path)
        self.values = values

    @dbus.service.method(PROPERTIES, "ss", "v")
    def Get(self, _interface, name):
        return self.values[name]

    @dbus.service.method(PROPERTIES, "ssv", "")
    def Set(self, interface, name, value):
        self.values[name] = value
        if name in ("DesktopId", "RequestedAccuracyLevel"):
            calls.append(f"{name} {value}")

    @dbus.service.signal(PROPERTIES, "sa{sv}as")
    def PropertiesChanged(self, interface, changed, invalidated):
        pass


class Manager(Holder):
    @dbus.service.method(NAME + ".Manager", "", "o")
    def GetClient(self):
        return CLIENT


class Client(Holder):
    place = None
    places = 0
    answer = "permit"
    waiting = []

    @dbus.service.method(NAME + ".Client", "", "", async_callbacks=("done", "failed"))
    def Start(self, done, failed):
        calls.append("Start")
        if self.answer == "refuse":
            failed(dbus.DBusException("not for you", name="org.freedesktop.DBus.Error.AccessDenied"))
        elif self.answer == "wait":
            self.waiting.append(done)
        else:
            self.isStarted = True
            done()
            self.setActive(self.answer == "permit")

    isStarted = False

    @dbus.service.method(NAME + ".Client", "", "")
    def Stop(self):
        calls.append("Stop")
        self.isStarted = False
        self.setActive(False)

    @dbus.service.signal(NAME + ".Client", "oo")
    def LocationUpdated(self, old, new):
        pass

    def setActive(self, active):
        if self.values["Active"] != active:
            self.values["Active"] = dbus.Boolean(active)
            self.PropertiesChanged(NAME + ".Client", {"Active": dbus.Boolean(active)}, [])
        if active:
            self.tell()

    def tell(self):
        if not self.values["Active"] or self.place is None:
            return
        latitude, longitude, accuracy, when = self.place
        self.places += 1
        path = dbus.ObjectPath(f"{CLIENT}/Location/{self.places}")
        seconds = int(when)
        Holder(bus, path, {
            "Latitude": latitude, "Longitude": longitude, "Accuracy": accuracy, "Altitude": -1.7976931348623157e308,
            "Speed": -1.0, "Heading": -1.0, "Description": "",
            "Timestamp": dbus.Struct((dbus.UInt64(seconds), dbus.UInt64(0)), signature="tt")})
        old, self.values["Location"] = self.values["Location"], path
        self.LocationUpdated(old, path)


class Governor(dbus.service.Object):
    INTERFACE = "quorvane.Governor"

    @dbus.service.method(INTERFACE, "dddd", "")
    def MoveTo(self, latitude, longitude, accuracy, age):
        client.place = (latitude, longitude, accuracy, time.time() - age)
        client.tell()

    @dbus.service.method(INTERFACE, "s", "")
    def Answer(self, answer):
        client.answer = answer
        if client.isStarted and answer in ("permit", "off"):
            client.setActive(answer == "permit")
        if answer == "permit":
            for done in client.waiting:
                client.isStarted = True
                done()
                client.setActive(True)
            client.waiting = []

    @dbus.service.method(INTERFACE, "", "")
    def Leave(self):
        bus.release_name(NAME)
        client.isStarted = False
        client.values["Active"] = dbus.Boolean(False)

    @dbus.service.method(INTERFACE, "", "")
    def Return(self):
        bus.request_name(NAME)

    @dbus.service.method(INTERFACE, "b", "")
    def Silence(self, silent):
        global isSilent
        isSilent = silent

    @dbus.service.method(INTERFACE, "", "as")
    def Calls(self):
        return calls + [""]


def swallow(_connection, message):
    """While the service is silent, what is said to it is taken and not answered."""
    isItsOwn = message.get_path() is not None and message.get_path().startswith("/org/freedesktop/GeoClue2")
    return dbus.lowlevel.HANDLER_RESULT_HANDLED if isSilent and isItsOwn else dbus.lowlevel.HANDLER_RESULT_NOT_YET_HANDLED


DBusGMainLoop(set_as_default=True)
isSilent = False
bus = dbus.bus.BusConnection(os.environ["DBUS_SYSTEM_BUS_ADDRESS"])
bus.add_message_filter(swallow)
calls = []
manager = Manager(bus, "/org/freedesktop/GeoClue2/Manager", {"AvailableAccuracyLevel": dbus.UInt32(8)})
client = Client(bus, CLIENT, {
    "Active": dbus.Boolean(False), "Location": dbus.ObjectPath("/"), "DesktopId": "",
    "DistanceThreshold": dbus.UInt32(0), "TimeThreshold": dbus.UInt32(0), "RequestedAccuracyLevel": dbus.UInt32(0)})
governor = Governor(bus, "/governor")
bus.request_name("quorvane.Governor")
bus.request_name(NAME)
print("ready", flush=True)
GLib.MainLoop().run()
