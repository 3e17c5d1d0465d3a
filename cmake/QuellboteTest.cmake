# add_quellbote_test(NAME <name> SOURCES <files...> [LIBS <targets...>] [GUI] [SERVICE] [KEYRING])
#
# Registers one QtTest executable with ctest. Core tests link quellbote_core and run without a
# display; GUI tests link quellbote_gui and run on the offscreen platform. SERVICE makes the path
# of quellbote-service known to the test, which starts its own copy on a free loopback port.
# KEYRING runs the test in a D-Bus session of its own with an unlocked gnome-keyring
# (tests/support/with-keyring.sh); every other test leaves keyrings alone, as the program does
# in Qt's test mode. The locale and the time zone are pinned so that no test depends on the machine.
function(add_quellbote_test)
    cmake_parse_arguments(ARG "GUI;SERVICE;KEYRING" "NAME" "SOURCES;LIBS" ${ARGN})
    add_executable(${ARG_NAME} ${ARG_SOURCES})
    if(ARG_GUI)
        target_link_libraries(${ARG_NAME} PRIVATE quellbote_gui quellbote_test_support_gui)
        set(label gui)
    else()
        target_link_libraries(${ARG_NAME} PRIVATE quellbote_core quellbote_test_support)
        set(label core)
    endif()
    target_link_libraries(${ARG_NAME} PRIVATE Qt6::Test quellbote_warnings ${ARG_LIBS})
    if(ARG_KEYRING)
        add_test(NAME ${ARG_NAME} COMMAND sh ${CMAKE_SOURCE_DIR}/tests/support/with-keyring.sh $<TARGET_FILE:${ARG_NAME}>)
    else()
        add_test(NAME ${ARG_NAME} COMMAND ${ARG_NAME})
    endif()
    # Window tests see one screen of 1600 x 1000 pixels, an ordinary office screen.
    set(env "LC_ALL=C.UTF-8" "LANG=C.UTF-8" "TZ=Europe/Berlin"
        "QT_QPA_PLATFORM=offscreen:configfile=${CMAKE_SOURCE_DIR}/tests/support/offscreen-screen.json")
    if(ARG_GUI)
        # The web engine runs without its sandbox (which refuses root) and without a GPU.
        list(APPEND env "QTWEBENGINE_DISABLE_SANDBOX=1"
            "QTWEBENGINE_CHROMIUM_FLAGS=--disable-gpu --no-first-run --disable-background-networking")
    endif()
    if(QUELLBOTE_SANITIZE)
        # Any finding ends the test (or the service it started) with a report; undefined behaviour
        # too, instead of being printed and passed over. Leaks are checked at the end of each
        # process; tests/lsan.supp lists those of libraries we don't build.
        set(asan "strict_string_checks=1:detect_stack_use_after_return=1")
        if(ARG_GUI)
            # Chromium in Qt WebEngine frees a page's parts with a smaller size than it allocated
            # them with (in ~WebContentsAdapter); the check can't be limited to our code.
            string(APPEND asan ":new_delete_type_mismatch=0")
        endif()
        list(APPEND env "ASAN_OPTIONS=${asan}"
            "LSAN_OPTIONS=suppressions=${PROJECT_SOURCE_DIR}/tests/lsan.supp"
            "UBSAN_OPTIONS=halt_on_error=1:print_stacktrace=1:suppressions=${PROJECT_SOURCE_DIR}/tests/ubsan.supp")
    endif()
    if(ARG_SERVICE)
        list(APPEND env "QUELLBOTE_SERVICE=$<TARGET_FILE:quellbote-service>")
        set(label "${label};service")
    endif()
    set_tests_properties(${ARG_NAME} PROPERTIES ENVIRONMENT "${env}" LABELS "${label}" TIMEOUT 300)
    # quellbote_core_tests and quellbote_gui_tests build one group with what it runs, so that a
    # tree that only runs "ctest -L core" builds no window.
    list(GET label 0 group)
    if(NOT TARGET quellbote_${group}_tests)
        add_custom_target(quellbote_${group}_tests)
    endif()
    add_dependencies(quellbote_${group}_tests ${ARG_NAME})
    if(ARG_SERVICE)
        add_dependencies(quellbote_${group}_tests quellbote-service)
    endif()
endfunction()
