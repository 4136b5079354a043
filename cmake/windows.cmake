# The Windows shell: ports and control peers, COM, resources and the two exes.
lock_layer(lock_win32 FOLDERS win32 USES lock_program)
