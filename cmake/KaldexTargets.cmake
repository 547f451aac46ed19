# What every target of the project shares: warnings, sanitizers, include paths, precompiled headers.

find_program(KALDEX_CCACHE ccache)
if(KALDEX_CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${KALDEX_CCACHE})
endif()

if(KALDEX_SANITIZE)
  add_compile_options(-fsanitize=${KALDEX_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${KALDEX_SANITIZE})
endif()

# kaldex_defaults(target): warnings as errors and the project's two include roots.
function(kaldex_defaults target)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Werror)
  target_compile_definitions(${target} PRIVATE QT_NO_KEYWORDS QT_NO_CAST_FROM_BYTEARRAY)
  target_include_directories(${target} PUBLIC
    $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include>
    $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>)
  target_include_directories(${target} PRIVATE ${PROJECT_SOURCE_DIR}/src)
endfunction()

# kaldex_library(target VERSIONED): a shared library of the product.
function(kaldex_library target)
  kaldex_defaults(${target})
  set_target_properties(${target} PROPERTIES
    VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
endfunction()
