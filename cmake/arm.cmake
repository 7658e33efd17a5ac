# Toolchain of a phone's processor: 32-bit ARM. Builds the targets framework, dsskey, pages, phonetemplate, simulator and
# host; nothing is linked against libraries that a build machine has for itself alone.
set(CMAKE_SYSTEM_NAME Linux)
set(CMAKE_SYSTEM_PROCESSOR arm)
set(CMAKE_CXX_COMPILER arm-linux-gnueabihf-g++)
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)
# The headers of the other libraries are the same on every machine. How arguments were passed before GCC 7 is nobody's
# concern.
set(CMAKE_CXX_FLAGS_INIT "-idirafter /usr/include -Wno-psabi")
set(CMAKE_CXX_FLAGS_RELEASE "-O1")
