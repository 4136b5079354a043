# The Windows shell: ports and control peers, COM, resources and the two exes.
find_program(HOST_CXX NAMES c++ g++ clang++ REQUIRED DOC "Compiler for programs that run while building")
find_program(WIDL NAMES x86_64-w64-mingw32-widl widl REQUIRED)
set(RESOURCES ${CMAKE_SOURCE_DIR}/src/apps/resources)
set(GENERATED ${CMAKE_BINARY_DIR}/generated)
file(MAKE_DIRECTORY ${GENERATED})

# The system's own interface definitions come with Wine's development files.
set(WIDL_FLAGS -I/usr/include/wine/wine/windows -L/usr/lib/x86_64-linux-gnu/wine/x86_64-windows
  --win64 -D_WIN64)

# lock_type_library(name file.idl): name.tlb and name_i.h among the generated files, target name_idl.
function(lock_type_library name idl)
  add_custom_command(OUTPUT ${GENERATED}/${name}.tlb ${GENERATED}/${name}_i.h
    COMMAND ${WIDL} ${WIDL_FLAGS} -t -o ${GENERATED}/${name}.tlb ${idl}
    COMMAND ${WIDL} ${WIDL_FLAGS} -h -o ${GENERATED}/${name}_i.h ${idl}
    DEPENDS ${idl} VERBATIM)
  add_custom_target(${name}_idl DEPENDS ${GENERATED}/${name}.tlb ${GENERATED}/${name}_i.h)
endfunction()

# Icons are drawn while building.
add_custom_command(OUTPUT ${GENERATED}/make_icon
  COMMAND ${HOST_CXX} -std=c++17 -O1 -o ${GENERATED}/make_icon ${CMAKE_SOURCE_DIR}/cmake/make_icon.cpp
  DEPENDS ${CMAKE_SOURCE_DIR}/cmake/make_icon.cpp VERBATIM)
foreach(icon panel console)
  add_custom_command(OUTPUT ${GENERATED}/${icon}.ico
    COMMAND ${GENERATED}/make_icon ${icon} ${GENERATED}/${icon}.ico
    DEPENDS ${GENERATED}/make_icon VERBATIM)
endforeach()

lock_type_library(NMRLock ${CMAKE_SOURCE_DIR}/src/win32/automation/NMRLock.idl)
lock_layer(lock_win32 FOLDERS win32 USES lock_program lock_sim)
add_dependencies(lock_win32 NMRLock_idl)
target_include_directories(lock_win32 PUBLIC ${GENERATED})
target_link_libraries(lock_win32 PUBLIC comctl32 comdlg32 ole32 oleaut32 uuid version gdi32 shell32 advapi32)

# lock_app(name source icon tlb...): a Windows program with its resources. Each tlb names a type library in it.
function(lock_app name)
  cmake_parse_arguments(A "" "ICON" "TYPE_LIBRARIES;USES" ${ARGN})
  add_executable(${name} WIN32 ${CMAKE_SOURCE_DIR}/src/apps/${name}.cpp ${RESOURCES}/${name}.rc)
  set(needs ${GENERATED}/${A_ICON}.ico ${RESOURCES}/app.manifest)
  foreach(library ${A_TYPE_LIBRARIES})
    list(APPEND needs ${GENERATED}/${library}.tlb)
    set_property(SOURCE ${RESOURCES}/${name}.rc APPEND PROPERTY COMPILE_DEFINITIONS
      LOCK_TYPELIB="${library}.tlb")
  endforeach()
  set_source_files_properties(${RESOURCES}/${name}.rc PROPERTIES
    INCLUDE_DIRECTORIES "${RESOURCES};${GENERATED}" OBJECT_DEPENDS "${needs}")
  target_link_libraries(${name} PRIVATE ${A_USES})
endfunction()

lock_app(VantrelLock ICON panel TYPE_LIBRARIES NMRLock USES lock_win32)

# The demonstration presses the panel's buttons, or drives it through the automation class.
if(EXISTS ${CMAKE_SOURCE_DIR}/src/apps/demo.cpp)
  add_executable(demo ${CMAKE_SOURCE_DIR}/src/apps/demo.cpp)
  target_link_libraries(demo PRIVATE lock_win32)
endif()

# Takes the pictures of the user guide.
add_executable(gallery EXCLUDE_FROM_ALL ${CMAKE_SOURCE_DIR}/src/apps/gallery.cpp)
target_link_libraries(gallery PRIVATE lock_win32)

lock_type_library(Pelorin ${CMAKE_SOURCE_DIR}/src/win32/console/Pelorin.idl)
lock_app(PelorinSim ICON console TYPE_LIBRARIES Pelorin USES lock_win32)
