# The one place that says which Qt. Everything else calls meshvane_find_qt(Component...) and links
# ${MESHVANE_QT}::Component. The versionless Qt::Component would be whatever Qt an including project found first.

set(MESHVANE_QT Qt5)
set(MESHVANE_QT_MINIMUM 5.15)

# A macro, because AUTOMOC reads the variables that find_package sets.
macro(meshvane_find_qt)
    find_package(${MESHVANE_QT} ${MESHVANE_QT_MINIMUM} REQUIRED COMPONENTS ${ARGN})
endmacro()
