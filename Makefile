# The front door: every target is a short script in scripts/. See `make help`.

.PHONY: help run test x86 check bench fuzz torture shots manual installer release format clean
.DEFAULT_GOAL := help

help:
	@echo "make run        build the tool and open it in the simulated building (screenshots without a display)"
	@echo "make test       build and test everything: Linux, Windows under Wine, end to end, help, installer, format"
	@echo "make x86        test the x86 programs as well, in a small system with 32-bit Wine that is made once"
	@echo "make check      static checks with clang-tidy, and which lines the core tests run"
	@echo "make bench      measure the hot paths"
	@echo "make fuzz       feed the parsers with bad input for a minute each"
	@echo "make torture    fail two host calls at a time, more than 100,000 pairs"
	@echo "make shots      save screenshots of the windows to build/shots"
	@echo "make manual     make the help: pages for a browser and the help file, in build/help"
	@echo "make installer  make the installer, in build/installer"
	@echo "make release    make the archive with installer, manual, checksums and licences, in build/release"
	@echo "make format     bring the sources into the agreed format"
	@echo "make clean      remove everything that was built"
	@echo "What is missing of the Debian packages in scripts/packages.txt is installed first."

run test x86 check bench fuzz torture shots manual release format:
	@scripts/$@.sh

installer:
	@OLD_PICTURES=1 scripts/manual.sh && scripts/installer.sh

clean:
	@rm -rf build && echo "build/ is removed"
