"""A session manager of the X desktop (XSMP), reduced to what a test needs: it takes one program in, asks it to save, and
tells it that the session ends.

Runs as a child of the stage:  session_manager.py   prints its address, then a line for each thing that happened, and reads
commands: "save" asks to save for a logout, "cancel" calls it off, "die" ends the session.
"""

import ctypes
import os
import select
import sys

ICE = ctypes.CDLL("libICE.so.6")
SM = ctypes.CDLL("libSM.so.6")
SAVE_LOCAL, SAVE_BOTH, INTERACT_NONE = 1, 2, 0
ICE_PENDING = 0

CALLED = ctypes.CFUNCTYPE(ctypes.c_int, ctypes.c_void_p, ctypes.c_void_p, ctypes.c_void_p, ctypes.c_void_p,
                          ctypes.c_void_p, ctypes.c_void_p, ctypes.c_void_p)
NEW_CLIENT = ctypes.CFUNCTYPE(ctypes.c_int, ctypes.c_void_p, ctypes.c_void_p, ctypes.POINTER(ctypes.c_ulong),
                              ctypes.c_void_p, ctypes.c_void_p)
ADMIT = ctypes.CFUNCTYPE(ctypes.c_int, ctypes.c_char_p)


class Callback(ctypes.Structure):
    _fields_ = [("call", CALLED), ("data", ctypes.c_void_p)]


class Callbacks(ctypes.Structure):
    """In the order of the library's SmsCallbacks."""
    NAMES = ("register_client", "interact_request", "interact_done", "save_yourself_request",
             "save_yourself_phase2_request", "save_yourself_done", "close_connection", "set_properties",
             "delete_properties", "get_properties")
    _fields_ = [(name, Callback) for name in NAMES]


for function, arguments in ((SM.SmsRegisterClientReply, [ctypes.c_void_p, ctypes.c_char_p]),
                            (SM.SmsSaveYourself, [ctypes.c_void_p] + [ctypes.c_int] * 4),
                            (SM.SmsSaveComplete, [ctypes.c_void_p]), (SM.SmsDie, [ctypes.c_void_p]),
                            (SM.SmsShutdownCancelled, [ctypes.c_void_p]),
                            (SM.SmsSaveYourselfPhase2, [ctypes.c_void_p]),
                            (ICE.IceProcessMessages, [ctypes.c_void_p] * 3),
                            (ICE.IceConnectionNumber, [ctypes.c_void_p]),
                            (ICE.IceConnectionStatus, [ctypes.c_void_p]),
                            (ICE.IceGetListenConnectionNumber, [ctypes.c_void_p]),
                            (ICE.IceSetHostBasedAuthProc, [ctypes.c_void_p, ADMIT])):
    function.argtypes = arguments
ICE.IceAcceptConnection.argtypes = [ctypes.c_void_p, ctypes.POINTER(ctypes.c_int)]
ICE.IceAcceptConnection.restype = ctypes.c_void_p
ICE.IceComposeNetworkIdList.restype = ctypes.c_char_p


def say(text):
    print(text, flush=True)


class Manager:
    def __init__(self):
        self._client = None
        self._in_logout = False
        # The library keeps pointers to these.
        self._admit = ADMIT(lambda host: 1)
        self._new_client = NEW_CLIENT(self._take_in)
        self._calls = {name: CALLED(getattr(self, "_" + name, self._pass_over)) for name in Callbacks.NAMES}
        error = ctypes.create_string_buffer(256)
        if not SM.SmsInitialize(b"test", b"1", self._new_client, None, self._admit, 256, error):
            sys.exit(error.value.decode())
        # By sockets of this machine's file system alone.
        getattr(ICE, "_IceTransNoListen")(b"tcp")
        count = ctypes.c_int()
        listening = ctypes.POINTER(ctypes.c_void_p)()
        if not ICE.IceListenForConnections(ctypes.byref(count), ctypes.byref(listening), 256, error):
            sys.exit(error.value.decode())
        self._listening = {}
        for index in range(count.value):
            ICE.IceSetHostBasedAuthProc(listening[index], self._admit)
            self._listening[ICE.IceGetListenConnectionNumber(listening[index])] = listening[index]
        self._connections = {}
        say(ICE.IceComposeNetworkIdList(count, listening).decode())

    def _take_in(self, client, _data, mask, callbacks, _reason):
        self._client = client
        table = ctypes.cast(callbacks, ctypes.POINTER(Callbacks)).contents
        for name, call in self._calls.items():
            setattr(table, name, Callback(call, None))
        mask[0] = (1 << len(Callbacks.NAMES)) - 1
        return 1

    def _pass_over(self, *_arguments):
        return 1

    def _register_client(self, client, _data, previous, *_rest):
        if previous:
            return 0
        SM.SmsRegisterClientReply(client, b"client-1")
        # Each newcomer saves once.
        SM.SmsSaveYourself(client, SAVE_LOCAL, 0, INTERACT_NONE, 0)
        return 1

    def _save_yourself_phase2_request(self, client, *_rest):
        SM.SmsSaveYourselfPhase2(client)
        return 1

    def _save_yourself_done(self, client, *_rest):
        say("saved" if self._in_logout else "taken in")
        if not self._in_logout:
            SM.SmsSaveComplete(client)
        return 1

    def _close_connection(self, *_rest):
        say("left")
        return 1

    def _command(self, word):
        if word == "save":
            self._in_logout = True
            SM.SmsSaveYourself(self._client, SAVE_BOTH, 1, INTERACT_NONE, 0)
        elif word == "cancel":
            self._in_logout = False
            SM.SmsShutdownCancelled(self._client)
        elif word == "die":
            SM.SmsDie(self._client)

    def run(self):
        commands = sys.stdin.fileno()
        while True:
            ready, _, _ = select.select([commands, *self._listening, *self._connections], [], [])
            for number in ready:
                if number == commands:
                    words = os.read(commands, 100).decode().split()
                    if not words:
                        return
                    for word in words:
                        self._command(word)
                elif number in self._listening:
                    status = ctypes.c_int()
                    connection = ICE.IceAcceptConnection(self._listening[number], ctypes.byref(status))
                    self._connections[ICE.IceConnectionNumber(connection)] = connection
                elif ICE.IceProcessMessages(self._connections[number], None, None) != 0:
                    del self._connections[number]
                    say("gone")


if __name__ == "__main__":
    Manager().run()
