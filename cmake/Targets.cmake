# Compile options of every target of the project. Linked privately, so that they do not apply to a user's build.
add_library(zelmar_label_build_options INTERFACE)
target_compile_features(zelmar_label_build_options INTERFACE cxx_std_17)
target_compile_definitions(zelmar_label_build_options INTERFACE
    QT_NO_CAST_TO_ASCII
    QT_NO_CAST_FROM_BYTEARRAY
    QT_NO_URL_CAST_FROM_STRING
    QT_NO_KEYWORDS
    QT_NO_FOREACH)
target_compile_options(zelmar_label_build_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wundef -Wcast-align)
if(CMAKE_CXX_COMPILER_ID MATCHES Clang)
    # QList destroys its commands by their exact type; the command's destructor is not virtual by contract.
    target_compile_options(zelmar_label_build_options INTERFACE -Wno-delete-non-abstract-non-virtual-dtor)
endif()
if(ZELMAR_LABEL_WARNINGS_AS_ERRORS)
    target_compile_options(zelmar_label_build_options INTERFACE -Werror)
endif()
if(ZELMAR_LABEL_SANITIZE)
    target_compile_options(zelmar_label_build_options INTERFACE
        -fsanitize=${ZELMAR_LABEL_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    target_link_options(zelmar_label_build_options INTERFACE -fsanitize=${ZELMAR_LABEL_SANITIZE})
endif()
if(ZELMAR_LABEL_FUZZ)
    target_compile_options(zelmar_label_build_options INTERFACE -fsanitize=fuzzer-no-link)
endif()
if(ZELMAR_LABEL_COVERAGE)
    target_compile_options(zelmar_label_build_options INTERFACE --coverage)
    target_link_options(zelmar_label_build_options INTERFACE --coverage)
endif()
