# Grows with the components; see QuorvaneTargets.cmake for the list of libraries.
