foreach(part LineRules LineSettings SerialLineState ModemLineWatch)
    zdr_add_test(tst_${part} LIBRARIES zdr::serial)
endforeach()

if(UNIX)
    zdr_add_test(tst_TermiosSettings LIBRARIES zdr::serial)
    foreach(part Engine EngineAccess EngineTransfer Notifier NotifierLifetime)
        zdr_add_test(tst_NativeSerial${part}
            SOURCES tst_NativeSerial${part}.cpp PtyPair.cpp PtyPair.h RecordingReceiver.h WatchedLine.h
            LIBRARIES zdr::serial)
    endforeach()
    zdr_add_test(tst_NativeSerialEngineUart
        SOURCES tst_NativeSerialEngineUart.cpp FakeUart.cpp FakeUart.h PtyPair.cpp PtyPair.h
            RecordingReceiver.h
        LIBRARIES zdr::serial)
endif()
