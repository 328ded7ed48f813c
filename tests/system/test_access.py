"""Who may have a port, and that only one has it."""

from hardware import AcmDevice, FtdiAdapter
from system_test import CONNECT_USB, PATIENCE, STOP_POLLING, SystemTest, ask
from tool import DIALOUT_USER, ROOT, USER

TRY_USB = f"""
    tab tabWidget Connection
    wait wUsbConnection/btnConnect enabled == true {PATIENCE}
    click wUsbConnection/btnConnect
    """

REFUSED_USB = """
    expect wUsbConnection/btnConnect enabled == true
    expect wUsbConnection/btnDisconnect enabled == false
    expect tabWidget currentTabText == Connection
    """


class Access(SystemTest):
    """The tool says no, keeps working, and disturbs nobody."""

    def setUp(self):
        super().setUp()
        device = AcmDevice()
        self.addCleanup(device.destroy)
        self.module = self.serve_line(device.far_end)
        self.module.tell("set 4 11111")

    def test_user_without_the_right_is_refused(self):
        far_end = self.serve_line(FtdiAdapter.far_end)
        said = self.drive(f"""
            {TRY_USB}
            {REFUSED_USB}
            {TRY_USB}
            {REFUSED_USB}
            tab twConnections RS485
            wait wSerialConnection/cmbDevices items contains ttyUSB0 {PATIENCE}
            select wSerialConnection/cmbDevices "ttyUSB0 [unknown]"
            click wSerialConnection/btnConnect
            expect wSerialConnection/btnConnect enabled == true
            expect wSerialConnection/btnDisconnect enabled == false
            close
            """, account=USER)
        for port in ("ttyACM0", "ttyUSB0"):
            self.assertIn(f'"{port}" open failed!', said)
        self.assertEqual(self.module.log() + far_end.log(), [])

    def test_user_of_the_group_is_let_in(self):
        self.drive(f"{CONNECT_USB} {ask(11111)} close", account=DIALOUT_USER)

    def test_second_tool_is_refused_until_the_first_lets_go(self):
        for account in (ROOT, DIALOUT_USER):
            with self.subTest(account="root" if account is ROOT else "user"):
                self.two_tools(account)

    def two_tools(self, account):
        def refused():
            asked = len(self.module.log())
            said = self.drive(f"{TRY_USB} {REFUSED_USB} close", account=account)
            self.assertIn('"ttyACM0" open failed!', said)
            self.assertIn("Device is busy!", said)
            self.assertEqual(len(self.module.log()), asked)

        def let_in():
            self.drive(f"{CONNECT_USB} {ask(22222)} close", account=account)

        self.module.tell("set 4 11111")
        self.drive(f"""
            {CONNECT_USB}
            {STOP_POLLING}
            cue refused
            {ask(11111)}
            cue change
            {ask(22222)}
            tab tabWidget Connection
            click wUsbConnection/btnDisconnect
            cue second
            close
            """, {"refused": refused, "change": lambda: self.module.tell("set 4 22222"),
                  "second": let_in}, account)
