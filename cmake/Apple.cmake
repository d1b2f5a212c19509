# What a build for macOS needs beyond a build for Linux.

# std::stop_token is among the experimental parts of libc++.
add_compile_options("$<$<COMPILE_LANGUAGE:CXX,OBJCXX>:-fexperimental-library>")
add_link_options("$<$<LINK_LANGUAGE:CXX,OBJCXX>:-fexperimental-library>")
