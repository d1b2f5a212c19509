# The application's icon as pictures, for desktops that do not draw the SVG themselves.
tarnwik_program(draw-icon SOURCES tools/DrawIcon.cpp LINK Qt6::Gui Qt6::Svg)
set(drawing ${CMAKE_SOURCE_DIR}/packaging/icons/example.tarnwik.client.svg)
set(pictures)
foreach(size 16 22 24 32 48 64 128 256 512)
  set(picture ${CMAKE_CURRENT_BINARY_DIR}/icons/${size}/example.tarnwik.client.png)
  file(MAKE_DIRECTORY ${CMAKE_CURRENT_BINARY_DIR}/icons/${size})
  add_custom_command(OUTPUT ${picture}
    COMMAND ${CMAKE_COMMAND} -E env LSAN_OPTIONS=detect_leaks=0 $<TARGET_FILE:draw-icon> ${drawing} ${picture} ${size}
    DEPENDS draw-icon ${drawing})
  install(FILES ${picture} DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/${size}x${size}/apps)
  list(APPEND pictures ${picture})
endforeach()
add_custom_target(tarnwik-icons ALL DEPENDS ${pictures})
