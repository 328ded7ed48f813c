zdr_add_test(tst_RingBuffer LIBRARIES zdr::serial)

# The device on an engine without a port, which is put in the place of the platform's by the linker.
set(serial_source "${PROJECT_SOURCE_DIR}/src/serial")
add_library(zdr_serial_without_port STATIC
    ${serial_source}/AbstractSerial.cpp ${serial_source}/AbstractSerial.h
    ${serial_source}/AbstractSerialEngine.cpp ${serial_source}/AbstractSerialEngine.h
    ${serial_source}/AbstractSerialPrivate.cpp
    ${serial_source}/LineRules.cpp
    ${serial_source}/RingBuffer.cpp
    ${serial_source}/SerialTexts.cpp
    FakeSerialEngine.cpp FakeSerialEngine.h)
zdr_configure_target(zdr_serial_without_port)
target_include_directories(zdr_serial_without_port PUBLIC "${PROJECT_SOURCE_DIR}/src")
target_link_libraries(zdr_serial_without_port PUBLIC Qt6::Core)

foreach(test
        tst_AbstractSerial
        tst_AbstractSerialArrival
        tst_AbstractSerialBaudRate
        tst_AbstractSerialControls
        tst_AbstractSerialLines
        tst_AbstractSerialReading
        tst_AbstractSerialTexts
        tst_AbstractSerialWaiting
        tst_AbstractSerialWriting)
    zdr_add_test(${test} LIBRARIES zdr_serial_without_port)
endforeach()

if(UNIX)
    # The device on the platform's engine and a pseudo-terminal.
    zdr_add_test(tst_AbstractSerialPort
        SOURCES tst_AbstractSerialPort.cpp PtyPair.cpp PtyPair.h
        LIBRARIES zdr::serial)
endif()
