# Toolchain of a phone's processor: 32-bit ARM. Builds the targets framework, dsskey, pages, phonetemplate, simulator and
# host; nothing is linked against libraries that a build machine has for itself alone.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR arm)
set(CMAKE_CXX_COMPILER arm-linux-gnueabihf-g++)
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)
# The headers of the other libraries are the same on every machine, or nearly so where they lie in a folder of the
# machine's own: what is built here is never run. How arguments were passed before GCC 7 is nobody's concern.
execute_process(COMMAND g++ -print-multiarch OUTPUT_VARIABLE own_folder OUTPUT_STRIP_TRAILING_WHITESPACE)
set(CMAKE_CXX_FLAGS_INIT "-idirafter /usr/include -idirafter /usr/include/${own_folder} -Wno-psabi")
set(CMAKE_CXX_FLAGS_RELEASE "-O1")
