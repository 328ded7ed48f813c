#include "simulator/plugged/SerialDevices.h"

namespace simulator {

namespace {

struct UsbStrings
{
    std::string vendorId;
    std::string productId;
    std::string manufacturer;
    std::string product;
};

std::string line(const std::string &text)
{
    return text + "\n";
}

// The strings as udev keeps them in properties: without blanks.
std::string property(const std::string &name, std::string value)
{
    for (char &character : value) {
        character = character == ' ' ? '_' : character;
    }
    return line("E: " + name + "=" + value);
}

std::string attribute(const std::string &name, const std::string &value)
{
    return line("A: " + name + "=" + value + "\\n");
}

std::string udevProperties(const UsbStrings &strings)
{
    return property("ID_BUS", "usb") + property("ID_VENDOR", strings.manufacturer)
        + property("ID_VENDOR_ID", strings.vendorId) + property("ID_MODEL", strings.product)
        + property("ID_MODEL_ID", strings.productId);
}

std::string usbDevice(const std::string &path, const UsbStrings &strings)
{
    return line("P: " + path) + property("SUBSYSTEM", "usb") + property("DEVTYPE", "usb_device")
        + udevProperties(strings) + attribute("idVendor", strings.vendorId)
        + attribute("idProduct", strings.productId)
        + attribute("manufacturer", strings.manufacturer) + attribute("product", strings.product)
        + "\n";
}

std::string usbInterface(const std::string &path, const std::string &driver)
{
    return line("P: " + path) + property("SUBSYSTEM", "usb") + property("DEVTYPE", "usb_interface")
        + property("DRIVER", driver) + attribute("bInterfaceNumber", "00") + "\n";
}

std::string tty(const std::string &path, const SerialDevice &device, const UsbStrings &strings)
{
    const std::size_t colon = device.number.find(':');
    return line("P: " + path) + property("SUBSYSTEM", "tty")
        + property("DEVNAME", "/dev/" + device.node)
        + property("MAJOR", device.number.substr(0, colon))
        + property("MINOR", device.number.substr(colon + 1)) + udevProperties(strings)
        + property("ID_USB_INTERFACE_NUM", "00") + attribute("dev", device.number) + "\n";
}

} // namespace

SerialDevice usbModuleDevice()
{
    const UsbStrings strings{"16d0", "7710", "Moravint", "ZDRM-7710"};
    const std::string device = "/devices/pci0000:00/0000:00:14.0/usb1/1-1";
    const std::string interface = device + "/1-1:1.0";
    const std::string port = interface + "/tty/ttyACM0";

    SerialDevice result{
        "ttyACM0", "166:0", {}, {"/sys" + port, "/sys" + interface, "/sys" + device}};
    result.description = usbDevice(device, strings) + usbInterface(interface, "cdc_acm")
        + tty(port, result, strings);
    return result;
}

SerialDevice rs485AdapterDevice()
{
    const UsbStrings strings{"0403", "6001", "FTDI", "FT232R USB UART"};
    const std::string device = "/devices/pci0000:00/0000:00:14.0/usb1/1-2";
    const std::string interface = device + "/1-2:1.0";
    const std::string converter = interface + "/ttyUSB0";
    const std::string port = converter + "/tty/ttyUSB0";

    SerialDevice result{"ttyUSB0",
                        "188:0",
                        {},
                        {"/sys" + port, "/sys" + converter, "/sys" + interface, "/sys" + device}};
    result.description = usbDevice(device, strings) + usbInterface(interface, "ftdi_sio")
        + line("P: " + converter) + property("SUBSYSTEM", "usb-serial")
        + property("DRIVER", "ftdi_sio") + "\n" + tty(port, result, strings);
    return result;
}

} // namespace simulator
