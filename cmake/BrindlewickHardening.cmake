# What makes a bug in what users run harder to turn against them. Sanitizers find the bugs, and want none of it.
#
# Positions independent of where the program is loaded are asked for by hand: CMake's own way gives libraries and
# programs different options, and so would want a third precompiled header.

include(CheckCXXCompilerFlag)

add_compile_options(-fPIE -fstack-protector-strong -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=3)
foreach(FLAG -fstack-clash-protection -fcf-protection)
    string(MAKE_C_IDENTIFIER "BRINDLEWICK_HAS${FLAG}" HAS_FLAG)
    check_cxx_compiler_flag(${FLAG} ${HAS_FLAG})
    if(${HAS_FLAG})
        add_compile_options(${FLAG})
    endif()
endforeach()
add_link_options(-pie -Wl,-z,relro,-z,now,-z,noexecstack)
