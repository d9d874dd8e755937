# cmake --install build --prefix /usr/local: the programs beside each other, where they find one another; what the program
# folder is filled from at the first start; entries in the desktop's menu.

include(GNUInstallDirs)

foreach(program flurax Kalibrix TabBridge flurax-batch flurax-alttabelle)
  if(TARGET ${program})
    install(TARGETS ${program} RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
  endif()
endforeach()
# The programs look for it at this place, seen from theirs.
install(DIRECTORY ${CMAKE_BINARY_DIR}/data/ DESTINATION share/flurax)
install(FILES docs/handbuch.md DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/flurax)
install(FILES docs/bildschirm.png DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/flurax)
install(DIRECTORY docs/bilder DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/flurax)
install(FILES setup/desktop/flurax.desktop setup/desktop/kalibrix.desktop setup/desktop/tabbridge.desktop
        DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
foreach(icon app=flurax calibrate=kalibrix sheet=tabbridge)
  string(REPLACE "=" ";" pair ${icon})
  list(GET pair 0 drawing)
  list(GET pair 1 name)
  install(FILES src/windows/desktop/icons/${drawing}.svg RENAME ${name}.svg
          DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
endforeach()
