package ifneeded oa 2.2 [list load [file join $dir liboaTcl[info sharedlibextension]] Oa]
