zdr_add_test(tst_HardwareId LIBRARIES zdr::serial)
zdr_add_test(tst_SerialInfo LIBRARIES zdr::serial)
zdr_add_test(tst_SerialDeviceEnumeratorBusy LIBRARIES zdr::serial)

# On ports that really exist for libudev, plugged in and pulled out by the test itself.
find_package(PkgConfig REQUIRED)
pkg_check_modules(UMOCKDEV REQUIRED IMPORTED_TARGET umockdev-1.0)
foreach(test tst_SerialDeviceEnumerator tst_UdevPort)
    zdr_add_test(${test}
        SOURCES ${test}.cpp SerialTestbed.cpp SerialTestbed.h
        LIBRARIES zdr::serial PkgConfig::UMOCKDEV
        LAUNCHER ${PROJECT_SOURCE_DIR}/tests/support/umockdev-launcher)
endforeach()
