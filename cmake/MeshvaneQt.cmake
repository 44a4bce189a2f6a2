# The one place that says which Qt. Everything else calls meshvane_find_qt(Component...) and links
# ${MESHVANE_QT}::Component. The versionless Qt::Component would be whatever Qt an including project found first.

set(MESHVANE_QT_MAJOR 5 CACHE STRING "Major version of Qt: 5 or 6")
set_property(CACHE MESHVANE_QT_MAJOR PROPERTY STRINGS 5 6)

set(MESHVANE_QT Qt${MESHVANE_QT_MAJOR})
if(MESHVANE_QT STREQUAL "Qt5")
    set(MESHVANE_QT_MINIMUM 5.15)
    set(MESHVANE_QT_REGEXP Core)
elseif(MESHVANE_QT STREQUAL "Qt6")
    set(MESHVANE_QT_MINIMUM 6.4)
    set(MESHVANE_QT_REGEXP Core5Compat) # the component with QRegExp
else()
    message(FATAL_ERROR "MESHVANE_QT_MAJOR is \"${MESHVANE_QT_MAJOR}\"; it must be 5 or 6.")
endif()

# A macro, because AUTOMOC reads the variables that find_package sets.
macro(meshvane_find_qt)
    find_package(${MESHVANE_QT} ${MESHVANE_QT_MINIMUM} REQUIRED COMPONENTS ${ARGN})
endmacro()
