# Warnings every target of the project builds with; a warning is a defect to fix, not to silence.
function(qzgui_warnings target)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wshadow -Wno-unused-parameter)
endfunction()
