# What needs the far end on Linux.

add_library(zdr_remote_objects STATIC
    comm/ScriptedPort.h
    comm/SleepCounter.cpp comm/SleepCounter.h
    serial/ComPort.h
    support/RemoteObject.cpp support/RemoteObject.h
    support/SimulatedCanBus.h
    support/SimulatedPort.h)
zdr_configure_target(zdr_remote_objects)
target_link_libraries(zdr_remote_objects PUBLIC zdr_import_table zdr_test_support ws2_32)

# --- The engine, the notifier and the list of ports
foreach(subject Engine EngineTransfer Notifier)
    zdr_add_test(tst_NativeSerial${subject}
        SOURCES serial/tst_NativeSerial${subject}.cpp
        LIBRARIES zdr_windows_serial zdr_remote_objects)
endforeach()
foreach(subject "" Calls)
    zdr_add_test(tst_SerialDeviceEnumerator${subject}
        SOURCES serial/tst_SerialDeviceEnumerator${subject}.cpp
            serial/DeviceKey.cpp serial/DeviceKey.h
        LIBRARIES zdr_windows_serial zdr_remote_objects)
endforeach()

# --- The serial handler
foreach(chapter Choices Exchange Version Wait)
    zdr_add_shared_test(tst_QSerialCommandHandler${chapter} comm
        LIBRARIES zdr::comm zdr_remote_objects)
endforeach()
# On these ports wine tells of no character while modem lines are watched, too; and what such a port
# holds outlives its closing.
set_property(TEST tst_QSerialCommandHandlerWait APPEND PROPERTY
    ENVIRONMENT "ZDR_WITHOUT=nothingIsReadByTheEventLoop lateReplyPutsAllOneBehind")
zdr_add_test(tst_QSerialCommandHandlerPort
    SOURCES comm/tst_QSerialCommandHandlerPort.cpp
    LIBRARIES zdr::comm zdr_remote_objects)
foreach(class ExchangeChain ReplyPolling)
    zdr_add_shared_test(tst_${class} comm LIBRARIES zdr::comm zdr_remote_objects)
endforeach()

# --- The CAN handler. The double of the maker's library has a folder of its own, for one test's PATH.
set(double "${PROJECT_SOURCE_DIR}/simulator/can")
add_library(zdr_canlib_double SHARED
    ${double}/BusLine.cpp ${double}/BusLine.h ${double}/BusLineWindows.cpp
    ${double}/CanLibraryDouble.cpp)
zdr_configure_target(zdr_canlib_double)
target_include_directories(zdr_canlib_double PRIVATE "${PROJECT_SOURCE_DIR}")
target_link_libraries(zdr_canlib_double PRIVATE ws2_32)
add_library(zdr_canlib_incomplete SHARED ${tests}/comm/can/IncompleteCanLibrary.cpp)
zdr_configure_target(zdr_canlib_incomplete)
foreach(library double incomplete)
    set_target_properties(zdr_canlib_${library} PROPERTIES
        AUTOMOC OFF AUTOUIC OFF AUTORCC OFF
        PREFIX ""
        OUTPUT_NAME canlib32
        RUNTIME_OUTPUT_DIRECTORY "${CMAKE_CURRENT_BINARY_DIR}/canlib/${library}"
        ARCHIVE_OUTPUT_DIRECTORY "${CMAKE_CURRENT_BINARY_DIR}/canlib/${library}")
endforeach()
file(WRITE "${CMAKE_CURRENT_BINARY_DIR}/canlib/broken/canlib32.dll" "")

function(zdr_add_can_test TARGET LIBRARY)
    zdr_add_shared_test(${TARGET} comm/can LIBRARIES zdr::comm zdr_remote_objects ${ARGN})
    set_property(TEST ${TARGET} APPEND PROPERTY
        ENVIRONMENT "ZDR_WINE_PATH=${CMAKE_CURRENT_BINARY_DIR}/canlib/${LIBRARY}")
    if(TARGET zdr_canlib_${LIBRARY})
        add_dependencies(${TARGET} zdr_canlib_${LIBRARY})
    endif()
endfunction()

add_library(zdr_can_test_support STATIC
    ${tests}/comm/can/ConnectedHandlerTest.cpp ${tests}/comm/can/ConnectedHandlerTest.h)
zdr_configure_target(zdr_can_test_support)
target_link_libraries(zdr_can_test_support PUBLIC zdr::comm zdr_remote_objects)

zdr_add_can_test(tst_CANKvaserCommandHandler double)
zdr_add_can_test(tst_CANKvaserExchange double zdr_can_test_support)
zdr_add_can_test(tst_CANKvaserFaults double zdr_can_test_support)
zdr_add_can_test(tst_CanLibrary double)
zdr_add_can_test(tst_CanLibraryIncomplete incomplete)
zdr_add_test(tst_CanLibraryMissing
    SOURCES comm/tst_CanLibraryMissing.cpp
    LIBRARIES zdr::comm)
add_test(NAME tst_CanLibraryBroken
    COMMAND "${ZDR_TEST_EMULATOR}" $<TARGET_FILE:tst_CanLibraryMissing>)
set_tests_properties(tst_CanLibraryBroken PROPERTIES
    TIMEOUT 300
    ENVIRONMENT "ZDR_WINE_PATH=${CMAKE_CURRENT_BINARY_DIR}/canlib/broken")

# --- The whole program, as it is installed, driven by the same plug-in as on Linux.
file(GLOB driver_sources CONFIGURE_DEPENDS ${tests}/driver/*.cpp ${tests}/driver/*.h)
list(FILTER driver_sources EXCLUDE REGEX "/tst_[^/]*$")
add_library(zdr_driver MODULE ${driver_sources})
zdr_configure_target(zdr_driver)
target_include_directories(zdr_driver PRIVATE "${tests}" "${tests}/driver")
target_link_libraries(zdr_driver PRIVATE Qt6::Widgets Qt6::Test)
# Ends any Qt program at its first paint.
add_library(zdr_first_paint MODULE
    ${PROJECT_SOURCE_DIR}/benchmarks/FirstPaintPlugin.cpp
    ${PROJECT_SOURCE_DIR}/benchmarks/FirstPaintPlugin.json)
zdr_configure_target(zdr_first_paint)
target_link_libraries(zdr_first_paint PRIVATE Qt6::Gui)
set_target_properties(zdr_driver zdr_first_paint PROPERTIES
    PREFIX ""
    LIBRARY_OUTPUT_DIRECTORY "${CMAKE_CURRENT_BINARY_DIR}/driver/generic")
add_custom_command(TARGET zdr_driver POST_BUILD
    COMMAND ${CMAKE_COMMAND} -E copy_if_different $<TARGET_FILE:Qt6::Test> "${CMAKE_CURRENT_BINARY_DIR}/driver")

if(PROJECT_IS_TOP_LEVEL)
    add_test(NAME tst_Program
        COMMAND "${CMAKE_CURRENT_SOURCE_DIR}/app/drive-program"
            "${PROJECT_BINARY_DIR}" "${CMAKE_CURRENT_BINARY_DIR}/driver" "${QT6_INSTALL_PREFIX}")
    set_tests_properties(tst_Program PROPERTIES TIMEOUT 300)
endif()
