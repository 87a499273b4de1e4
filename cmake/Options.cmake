# What every target of ours is built with: one interface target, no global flags.
add_library(ostrova_options INTERFACE)
add_library(ostrova::options ALIAS ostrova_options)
target_compile_features(ostrova_options INTERFACE cxx_std_20)
target_include_directories(ostrova_options INTERFACE ${PROJECT_SOURCE_DIR}/src)
target_compile_options(ostrova_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wno-sign-conversion -Wnon-virtual-dtor
    -Woverloaded-virtual -Wcast-qual -Wformat=2 -Wimplicit-fallthrough
    # Members that an initializer leaves out have their defaults; that is what they are for.
    -Wno-missing-field-initializers
    # GCC 12 sees overlaps and overruns in std::string and std::variant that are not there.
    $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>
    $<$<CXX_COMPILER_ID:GNU>:-Wno-array-bounds>
    $<$<CXX_COMPILER_ID:GNU>:-Wno-stringop-overflow>
    $<$<CXX_COMPILER_ID:GNU>:-Wno-stringop-overread>
    $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
if(OSTROVA_WERROR)
    target_compile_options(ostrova_options INTERFACE -Werror)
endif()
# Asserts are on in every preset but release.
if(OSTROVA_SANITIZE)
    # Without no-recover a fault is printed and the exit status stays 0.
    target_compile_options(ostrova_options INTERFACE
        -fsanitize=${OSTROVA_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(ostrova_options INTERFACE -fsanitize=${OSTROVA_SANITIZE})
endif()
if(OSTROVA_COVERAGE)
    target_compile_options(ostrova_options INTERFACE --coverage)
    target_link_options(ostrova_options INTERFACE --coverage)
endif()

# No path of the building machine gets into a binary: two folders give the same bytes, and the
# compiler cache serves them both.
target_compile_options(ostrova_options INTERFACE -ffile-prefix-map=${PROJECT_SOURCE_DIR}=.)
find_program(CCACHE ccache)
if(CCACHE)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env CCACHE_BASEDIR=${PROJECT_SOURCE_DIR}
        CCACHE_NOHASHDIR=1 CCACHE_SLOPPINESS=pch_defines,time_macros ${CCACHE})
endif()

# ostrova_add_folder(NAME SOURCES... [PUBLIC libs...] [PRIVATE libs...])
# One static library a folder of src/, used by its alias ostrova::NAME.
function(ostrova_add_folder name)
    cmake_parse_arguments(ARG "" "" "SOURCES;PUBLIC;PRIVATE" ${ARGN})
    add_library(ostrova_${name} STATIC ${ARG_SOURCES})
    add_library(ostrova::${name} ALIAS ostrova_${name})
    target_link_libraries(ostrova_${name}
        PUBLIC ${ARG_PUBLIC} PRIVATE ostrova::options ${ARG_PRIVATE})
endfunction()
