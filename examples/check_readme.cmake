# The program in README.md must be the one that the tests compile and run.
file(READ "${README}" readme)
file(READ "${PROGRAM}" program)
string(FIND "${readme}" "${program}" place)
if(place EQUAL -1)
  message(FATAL_ERROR "README.md doesn't show ${PROGRAM} as it stands")
endif()
