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
# The guards of a program that reads what strangers send. The sanitizers and the counters stand in
# their way, and _FORTIFY_SOURCE needs an optimising build.
if(OSTROVA_HARDENING AND NOT OSTROVA_SANITIZE AND NOT OSTROVA_COVERAGE)
    target_compile_options(ostrova_options INTERFACE -fstack-protector-strong
        $<$<CONFIG:Release,RelWithDebInfo,MinSizeRel>:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2>)
    target_link_options(ostrova_options INTERFACE -pie -Wl,-z,relro,-z,now)
    # Most compilers make position-independent programs (-fPIE) unasked. The others are told in the
    # way of the build system: Qt's headers accept -fPIC only.
    include(CheckCXXSourceCompiles)
    check_cxx_source_compiles("#ifndef __PIE__\n#error no\n#endif\nint main() {}" OSTROVA_PIE)
    if(NOT OSTROVA_PIE)
        set(CMAKE_POSITION_INDEPENDENT_CODE ON)
    endif()
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
