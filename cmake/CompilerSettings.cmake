# How every target of the project is compiled; call quorvantis_target(NAME) on each.

foreach(language CXX OBJCXX)
  set(CMAKE_${language}_STANDARD 20)
  set(CMAKE_${language}_STANDARD_REQUIRED ON)
  set(CMAKE_${language}_EXTENSIONS OFF)
  set(CMAKE_${language}_VISIBILITY_PRESET hidden)
endforeach()
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)

find_program(QUORVANTIS_CCACHE ccache)
if(QUORVANTIS_CCACHE)
  set(CMAKE_C_COMPILER_LAUNCHER "${QUORVANTIS_CCACHE}")
  set(CMAKE_CXX_COMPILER_LAUNCHER "${QUORVANTIS_CCACHE}")
  set(CMAKE_OBJCXX_COMPILER_LAUNCHER "${QUORVANTIS_CCACHE}")
endif()

if(QUORVANTIS_SANITIZE)
  add_compile_options(-fsanitize=${QUORVANTIS_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${QUORVANTIS_SANITIZE})
endif()

if(QUORVANTIS_PACKAGES)
  add_compile_options("-ffile-prefix-map=${PROJECT_SOURCE_DIR}=.")
endif()

# Hardening as in the OpenSSF's guide for C and C++ compilers. The sanitizers find more, and conflict with some of
# this.
include(CheckPIESupported)
check_pie_supported(LANGUAGES CXX)
if(NOT QUORVANTIS_SANITIZE)
  include(CheckCXXCompilerFlag)
  add_compile_options(
    "$<$<NOT:$<CONFIG:Debug>>:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=3>"
    -D_GLIBCXX_ASSERTIONS
    -fstack-protector-strong
    -fno-delete-null-pointer-checks
    -fno-strict-overflow
    -fno-strict-aliasing)
  foreach(flag IN ITEMS -fstack-clash-protection -fcf-protection=full -ftrivial-auto-var-init=zero)
    string(MAKE_C_IDENTIFIER "QUORVANTIS_HAS${flag}" known)
    check_cxx_compiler_flag(${flag} ${known})
    if(${known})
      add_compile_options(${flag})
    endif()
  endforeach()
  if(CMAKE_SYSTEM_NAME STREQUAL "Linux")
    add_link_options(LINKER:-z,relro LINKER:-z,now LINKER:-z,noexecstack LINKER:--as-needed)
  endif()
endif()

# The project's version for C++: the bundle's string, and the number of Xcode's two symbols.
set(QUORVANTIS_VERSION "${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR}")

function(quorvantis_target target)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor
    -Wformat=2 -Wimplicit-fallthrough $<$<CXX_COMPILER_ID:Clang>:-Wreserved-identifier>)
  target_include_directories(${target} PUBLIC "$<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>")
endfunction()
