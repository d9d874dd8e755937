# cmake -DBUILD=... -DSCRATCH=... -P install_test.cmake
# Installs into an empty folder and works from there: what a program needs beside itself must have come along.

file(REMOVE_RECURSE ${SCRATCH})

function(run_here)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE status OUTPUT_VARIABLE said ERROR_VARIABLE said)
  if(NOT status EQUAL 0)
    message(FATAL_ERROR "${ARGN}: ${status}\n${said}")
  endif()
  set(said "${said}" PARENT_SCOPE)
endfunction()

run_here(${CMAKE_COMMAND} --install ${BUILD} --prefix ${SCRATCH}/ort)
foreach(wanted bin/flurax bin/Kalibrix bin/TabBridge bin/flurax-batch bin/flurax-alttabelle share/flurax/MUSTER.MDB
        share/flurax/Tipps.txt share/flurax/Hilfe/Kalibrix.htm share/applications/kalibrix.desktop
        share/icons/hicolor/scalable/apps/tabbridge.svg share/doc/flurax/handbuch.md)
  if(NOT EXISTS ${SCRATCH}/ort/${wanted})
    message(FATAL_ERROR "Missing after the installation: ${wanted}")
  endif()
endforeach()
# The entries of the menu name programs and drawings that are there.
file(GLOB entries ${SCRATCH}/ort/share/applications/*.desktop)
foreach(entry ${entries})
  file(STRINGS ${entry} lines)
  foreach(line ${lines})
    if(line MATCHES "^Exec=([^ ]+)")
      set(wanted bin/${CMAKE_MATCH_1})
    elseif(line MATCHES "^Icon=(.+)")
      set(wanted share/icons/hicolor/scalable/apps/${CMAKE_MATCH_1}.svg)
    else()
      continue()
    endif()
    if(NOT EXISTS ${SCRATCH}/ort/${wanted})
      message(FATAL_ERROR "${entry} names what is missing: ${wanted}")
    endif()
  endforeach()
endforeach()

set(map ${SCRATCH}/ort/share/flurax/Beispiele/Karte.bmp)
run_here(${CMAKE_COMMAND} -E env --unset=FLURAX_HOME HOME=${SCRATCH} XDG_DATA_HOME=${SCRATCH}/daten
         ${SCRATCH}/ort/bin/flurax-batch bild ${map} ${SCRATCH}/bild.png --zoom 0.1)
if(NOT EXISTS ${SCRATCH}/bild.png)
  message(FATAL_ERROR "No picture was drawn: ${said}")
endif()
# A program with windows fills its folder from what was installed, not from where it was built.
execute_process(COMMAND ${CMAKE_COMMAND} -E env FLURAX_HOME=${SCRATCH}/heim QT_QPA_PLATFORM=offscreen
                        ${SCRATCH}/ort/bin/Kalibrix TIMEOUT 3 OUTPUT_QUIET ERROR_QUIET)
if(NOT EXISTS ${SCRATCH}/heim/Hilfe/Kalibrix.htm)
  message(FATAL_ERROR "Kalibrix did not fill its folder.")
endif()
file(REMOVE_RECURSE ${SCRATCH})
