# How every target of the project is made: one place for language level, warnings and sanitizers.

find_package(Threads REQUIRED)

# Debug builds link some two hundred test programs: the quick linker takes a fifth of the time.
find_program(ZDR_LLD ld.lld)
mark_as_advanced(ZDR_LLD)

# Language, warnings and sanitizers for TARGET, as properties of that target alone, so that a
# project that takes this one in by add_subdirectory() keeps its own flags.
function(zdr_configure_target TARGET)
    target_compile_features(${TARGET} PUBLIC cxx_std_20)
    set_target_properties(${TARGET} PROPERTIES CXX_EXTENSIONS OFF)
    target_compile_definitions(${TARGET} PRIVATE
        QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_FOREACH)
    if(CMAKE_CXX_COMPILER_ID MATCHES "GNU|Clang")
        # The protocol's bytes travel as signed char on every processor.
        target_compile_options(${TARGET} PUBLIC -fsigned-char)
        target_compile_options(${TARGET} PRIVATE
            -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Woverloaded-virtual
            # GCC 12 sees overlaps in std::string's own assignment that aren't there.
            $<$<AND:$<CXX_COMPILER_ID:GNU>,$<VERSION_LESS:$<CXX_COMPILER_VERSION>,13>>:-Wno-restrict>
            # Early GCC 12, as Debian's for Windows, counts private members of base classes as shadowed.
            $<$<AND:$<CXX_COMPILER_ID:GNU>,$<VERSION_LESS:$<CXX_COMPILER_VERSION>,12.1>>:-Wno-shadow>
            $<$<BOOL:${ZDR_WARNINGS_AS_ERRORS}>:-Werror>)
        if(ZDR_LLD AND NOT CMAKE_CROSSCOMPILING)
            target_link_options(${TARGET} PRIVATE $<$<CONFIG:Debug>:-fuse-ld=lld>)
        endif()
    elseif(MSVC)
        target_compile_options(${TARGET} PRIVATE
            /W4 /utf-8 $<$<BOOL:${ZDR_WARNINGS_AS_ERRORS}>:/WX>)
    endif()
    if(ZDR_SANITIZER)
        target_compile_options(${TARGET} PRIVATE
            -fsanitize=${ZDR_SANITIZER} -fno-omit-frame-pointer -fno-sanitize-recover=all)
        target_link_options(${TARGET} PUBLIC -fsanitize=${ZDR_SANITIZER})
    endif()
endfunction()

# The toolkit's headers that nearly every source includes, compiled once: a build takes a third of
# the time. A source still includes what it uses (scripts/check sees to that).
option(ZDR_PRECOMPILE_HEADERS "Compile the toolkit's headers only once (GCC)" ON)
if(ZDR_PRECOMPILE_HEADERS AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND NOT CMAKE_CROSSCOMPILING)
    file(WRITE "${PROJECT_BINARY_DIR}/toolkit_headers.cpp" "")
    add_library(zdr_toolkit_headers STATIC EXCLUDE_FROM_ALL "${PROJECT_BINARY_DIR}/toolkit_headers.cpp")
    zdr_configure_target(zdr_toolkit_headers)
    # Without the definitions of the widgets' library, which its users need not have.
    target_link_libraries(zdr_toolkit_headers PRIVATE Qt6::Core)
    target_include_directories(zdr_toolkit_headers SYSTEM PRIVATE
        ${Qt6Gui_INCLUDE_DIRS} ${Qt6Widgets_INCLUDE_DIRS})
    set_target_properties(zdr_toolkit_headers PROPERTIES AUTOMOC OFF AUTOUIC OFF AUTORCC OFF)
    target_precompile_headers(zdr_toolkit_headers PRIVATE
        <QCheckBox> <QComboBox> <QDebug> <QGroupBox> <QLabel> <QPushButton> <QSpinBox> <QString>
        <QStringList> <QTabWidget> <QWidget> <functional> <memory> <vector>)
endif()

# For targets that use the toolkit.
function(zdr_use_toolkit_headers TARGET)
    if(TARGET zdr_toolkit_headers)
        target_precompile_headers(${TARGET} REUSE_FROM zdr_toolkit_headers)
    endif()
endfunction()

# zdr_add_library(zdr_comm SOURCES ... DEPENDS ...)
# One folder of src/ as a static library with the alias zdr::comm. Includes are written from src/.
function(zdr_add_library TARGET)
    cmake_parse_arguments(PARSE_ARGV 1 ARG "" "" "SOURCES;DEPENDS")
    add_library(${TARGET} STATIC ${ARG_SOURCES})
    string(REPLACE "zdr_" "zdr::" alias ${TARGET})
    add_library(${alias} ALIAS ${TARGET})
    zdr_configure_target(${TARGET})
    target_include_directories(${TARGET} PUBLIC "${PROJECT_SOURCE_DIR}/src")
    zdr_use_toolkit_headers(${TARGET})
    set_target_properties(${TARGET} PROPERTIES AUTOUIC_SEARCH_PATHS "${CMAKE_CURRENT_SOURCE_DIR}/forms")
    target_link_libraries(${TARGET} PUBLIC ${ARG_DEPENDS})
endfunction()

# zdr_add_test(tst_Request SOURCES ... LIBRARIES ... [LAUNCHER ...] [LABELS ...] [THREADED])
# A Qt Test program named as the class that it tests. SOURCES default to tst_Request.cpp.
# LAUNCHER is a command put before the program; ZDR_TEST_EMULATOR is another, for programs of another
# system than the one that builds them. THREADED tests run under ThreadSanitizer, too.
function(zdr_add_test TARGET)
    cmake_parse_arguments(PARSE_ARGV 1 ARG "THREADED" "" "SOURCES;LIBRARIES;LAUNCHER;LABELS")
    if(NOT ARG_SOURCES)
        set(ARG_SOURCES ${TARGET}.cpp)
    endif()
    add_executable(${TARGET} ${ARG_SOURCES})
    zdr_configure_target(${TARGET})
    zdr_use_toolkit_headers(${TARGET})
    target_link_libraries(${TARGET} PRIVATE ${ARG_LIBRARIES} zdr_test_support Qt6::Test)
    if(ARG_THREADED)
        list(APPEND ARG_LABELS threaded)
        add_dependencies(threaded_tests ${TARGET})
    endif()
    if(CMAKE_CROSSCOMPILING)
        list(PREPEND ARG_LAUNCHER "${ZDR_TEST_EMULATOR}")
    endif()
    add_test(NAME ${TARGET} COMMAND ${ARG_LAUNCHER} $<TARGET_FILE:${TARGET}>)
    set_tests_properties(${TARGET} PROPERTIES
        TIMEOUT 300
        LABELS "${ARG_LABELS}"
        ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8;${ZDR_TEST_ENVIRONMENT}")
endfunction()
