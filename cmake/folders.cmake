# Each folder of the house is seen through an include path of its own, which holds that folder alone:
# "platform/log.h" is found by those who link `platform` and by nobody else. So a page cannot include the host.

# folder_headers(NAME): an interface target NAME whose include path holds the folder NAME of the source tree.
function(folder_headers name)
  set(view ${CMAKE_BINARY_DIR}/include/${name})
  file(MAKE_DIRECTORY ${view})
  file(CREATE_LINK ${CMAKE_SOURCE_DIR}/${name} ${view}/${name} SYMBOLIC)
  add_library(${name}_headers INTERFACE)
  target_include_directories(${name}_headers INTERFACE ${view})
endfunction()

# Sources of a folder and the folders in it: adding a page takes no line here.
function(folder_sources out)
  file(GLOB_RECURSE found CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
  list(FILTER found EXCLUDE REGEX "/main\\.cpp$")
  set(${out} ${found} PARENT_SCOPE)
endfunction()
