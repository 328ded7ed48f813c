"""A module on CAN, over the kernel's driver of a Kvaser card."""

from hardware import CanCard, CanInterface, wait_until
from system_test import PATIENCE, STOP_POLLING, SystemTest, ask
from tool import USER, Tool


def connect(rate):
    """Steps that connect at RATE kBit/s."""
    return f"""
    tab tabWidget Connection
    tab twConnections "CAN (Kvaser)"
    select wCANKvaserConnection/cmbBitrate {rate}
    set wCANKvaserConnection/sbSendId 9
    click wCANKvaserConnection/btnConnect
    wait tabWidget currentTabText == Quickstart {PATIENCE}
    """


DISCONNECT = """
    tab tabWidget Connection
    click wCANKvaserConnection/btnDisconnect
    """


class Can(SystemTest):
    """The tool is on can0, the module on can1 of the same bus."""

    def setUp(self):
        super().setUp()
        self.tools = CanInterface("can0")
        self.modules = CanInterface("can1")
        self.tools.down()

    def serve(self, rate):
        self.modules.up(rate * 1000)
        module = self.serve_can("can1", "--can-address", "9")
        module.tell("set 4 11111")
        return module

    def assert_state(self, state):
        self.assertEqual(self.tools.state(), state)

    def test_bit_rates_are_set_and_the_interface_is_left_as_it_was(self):
        module = self.serve(500)

        def change_rate():
            self.assert_state("down 500000")
            self.modules.up(250000)
            module.tell("set 4 22222")

        self.drive(f"""
            {connect(500)}
            cue first
            {ask(11111)}
            {DISCONNECT}
            cue change
            {connect(250)}
            cue second
            {ask(22222)}
            {DISCONNECT}
            cue after
            close
            """, {"first": lambda: self.assert_state("up 500000"), "change": change_rate,
                  "second": lambda: self.assert_state("up 250000"),
                  "after": lambda: self.assert_state("down 250000")})
        self.assertIn("can < 009 [8] 06 04 00 00 00 00 00 03", module.log())

    def test_interface_that_is_up_stays_up_and_gets_the_rate(self):
        self.tools.up(125000)
        self.serve(250)
        self.drive(f"""
            {connect(250)}
            {ask(11111)}
            {DISCONNECT}
            close
            """)
        self.assert_state("up 250000")

    def test_ordinary_user_takes_the_interface_as_it_is(self):
        self.serve(500)
        self.tools.up(500000)
        said = self.drive(f"""
            {connect(500)}
            {ask(11111)}
            {DISCONNECT}
            close
            """, account=USER)
        self.assertNotIn("failed", said)
        self.assert_state("up 500000")

    def test_ordinary_user_can_neither_set_the_rate_nor_take_it_up(self):
        self.tools.up(500000)
        self.tools.down()
        said = self.drive(f"""
            {connect(250).rsplit('wait', 1)[0]}
            wait wCANKvaserConnection/btnConnect enabled == true {PATIENCE}
            expect wCANKvaserConnection/btnDisconnect enabled == false
            close
            """, account=USER)
        self.assertIn("canSetBusParams -> failed!", said)
        self.assertIn("canBusOn -> failed!", said)
        self.assert_state("down 500000")

    def test_card_pulled_out_and_plugged_in_again(self):
        card = CanCard()
        module = self.serve(500)

        def pull_out_amid_polling():
            count = len(module.log())
            wait_until(lambda: len(module.log()) > count + 20, "the tool polls")
            card.pull_out()

        with Tool(f"""
            {connect(500)}
            cue out
            tab tabWidget Connection
            wait wCANKvaserConnection/btnConnect enabled == true {PATIENCE}
            expect wCANKvaserConnection/btnDisconnect enabled == false
            cue idle
            cue again
            {connect(500)}
            {STOP_POLLING}
            {ask(11111)}
            close
            """, {"out": pull_out_amid_polling, "idle": lambda: self.assert_idle(tool),
                  "again": card.plug}) as tool:
            tool.finish()
