# Builds the package from what is built already, unpacks it, and starts its programs from there.
file(REMOVE_RECURSE ${WORK})
file(MAKE_DIRECTORY ${WORK})

function(run_in_work what)
  execute_process(COMMAND ${ARGN} WORKING_DIRECTORY ${WORK}
    RESULT_VARIABLE status OUTPUT_VARIABLE out ERROR_VARIABLE out)
  if(NOT status EQUAL 0)
    message(FATAL_ERROR "${what} ended with ${status}:\n${out}")
  endif()
  set(said "${out}" PARENT_SCOPE)
endfunction()

run_in_work("cpack" ${CPACK} -G DEB --config ${BUILD}/CPackConfig.cmake -B ${WORK})
file(GLOB packages ${WORK}/torvane_${VERSION}_*.deb)
list(LENGTH packages count)
if(NOT count EQUAL 1)
  message(FATAL_ERROR "one package was expected, not: ${packages}")
endif()

run_in_work("dpkg-deb" ${DPKG_DEB} --extract ${packages} ${WORK}/root)
foreach(name bin/torvane bin/torvane-check bin/torvane-sim bin/torvane-office bin/torvane-generate
        bin/torvane-journal
        bin/torvane-contract bin/torvane-simulated libexec/torvane/torvane-check-qt share/applications/torvane.desktop
        share/applications/torvane-simulated.desktop
        share/icons/hicolor/scalable/apps/torvane.svg share/torvane/installation/Control.cfg
        share/torvane/installation/Programs/SHOP/STAR.prg share/doc/torvane/copyright)
  if(NOT EXISTS ${WORK}/root/usr/${name})
    message(FATAL_ERROR "the package holds no usr/${name}")
  endif()
endforeach()

run_in_work("dpkg-deb" ${DPKG_DEB} --field ${packages} Depends)
foreach(library libqt6widgets6 libqt6serialport6 fonts-b612)
  if(NOT said MATCHES ${library})
    message(FATAL_ERROR "the package does not depend on ${library}: ${said}")
  endif()
endforeach()

# What was packed works: the example's programs pass the checker that came with it.
run_in_work("torvane-check" ${WORK}/root/usr/bin/torvane-check
  --root ${WORK}/root/usr/share/torvane/installation SHOP STAR)
run_in_work("torvane-check --plot" ${WORK}/root/usr/bin/torvane-check --plot ${WORK}/star.png
  --root ${WORK}/root/usr/share/torvane/installation SHOP STAR)
if(NOT EXISTS ${WORK}/star.png)
  message(FATAL_ERROR "the checker of the package drew no picture")
endif()
foreach(program torvane torvane-sim torvane-generate torvane-contract torvane-journal)
  run_in_work(${program} ${WORK}/root/usr/bin/${program} --help)
endforeach()
file(REMOVE_RECURSE ${WORK})
