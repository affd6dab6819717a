# Read by cpack before it makes the package: libraries that are recommended are no dependencies.
set(ENV{CORVANE_RECOMMENDED_LIBRARY} "${CPACK_CORVANE_RECOMMENDED_LIBRARY}")
set(SHLIBDEPS_EXECUTABLE "${CPACK_CORVANE_SHLIBDEPS}")
