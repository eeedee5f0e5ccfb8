"""An authentication agent that answers as it is told, for one process of an ordinary user.

What a desktop's agent does after a good password (its setuid helper tells polkit so) this one does at once, as root.
"""
from gi.repository import Gio, GLib

AUTHORITY = ('org.freedesktop.PolicyKit1', '/org/freedesktop/PolicyKit1/Authority',
             'org.freedesktop.PolicyKit1.Authority')
PLACE = '/com/torvandelsyn/kestrune/TestAgent'
INTERFACE = Gio.DBusNodeInfo.new_for_xml('''<node>
  <interface name="org.freedesktop.PolicyKit1.AuthenticationAgent">
    <method name="BeginAuthentication">
      <arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="s" direction="in"/>
      <arg type="a{ss}" direction="in"/><arg type="s" direction="in"/><arg type="a(sa{sv})" direction="in"/>
    </method>
    <method name="CancelAuthentication"><arg type="s" direction="in"/></method>
  </interface>
</node>''').interfaces[0]


def start_time(pid):
    with open(f'/proc/{pid}/stat', encoding='utf-8') as stat:
        return int(stat.read().rsplit(')', 1)[1].split()[19])


class Agent:
    """answer is "accept", "cancel" (the user closed the dialog) or "fail" (no good password was given)."""

    def __init__(self, answer):
        self.answer = answer
        self.asked = []  # (action, message) of each question
        self.bus = Gio.bus_get_sync(Gio.BusType.SYSTEM)
        self.bus.register_object(PLACE, INTERFACE, self._called, None, None)

    def serve(self, pid, uid):
        """From now on polkit asks this agent about what the process does."""
        subject = ('unix-process', {'pid': GLib.Variant('u', pid), 'uid': GLib.Variant('i', uid),
                                    'start-time': GLib.Variant('t', start_time(pid))})
        self.bus.call_sync(*AUTHORITY, 'RegisterAuthenticationAgent',
                           GLib.Variant('((sa{sv})ss)', (subject, 'C', PLACE)), None, Gio.DBusCallFlags.NONE, 5000, None)

    def _called(self, _bus, _sender, _path, _interface, method, arguments, invocation):
        if method == 'CancelAuthentication':
            invocation.return_value(None)
            return
        action, message, _icon, _details, cookie, _identities = arguments.unpack()
        self.asked.append((action, message))
        if self.answer == 'cancel':
            invocation.return_dbus_error('org.freedesktop.PolicyKit1.Error.Cancelled', 'The dialog was dismissed')
        elif self.answer == 'accept':
            root = ('unix-user', {'uid': GLib.Variant('u', 0)})
            self.bus.call(*AUTHORITY, 'AuthenticationAgentResponse2',
                          GLib.Variant('(us(sa{sv}))', (0, cookie, root)), None, Gio.DBusCallFlags.NONE, 5000, None,
                          self._responded, invocation)
        else:
            invocation.return_value(None)

    def _responded(self, bus, result, invocation):
        try:
            bus.call_finish(result)
            invocation.return_value(None)
        except GLib.Error as error:
            invocation.return_dbus_error('org.freedesktop.PolicyKit1.Error.Failed', str(error))
