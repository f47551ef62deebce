# The rules are compiled from the copies in VANTREL_MUTATED, which lie there as their originals do in src/.
target_include_directories(vantrel_platform BEFORE INTERFACE ${VANTREL_MUTATED})
foreach(module app session server browser lockdown)
  get_target_property(sources vantrel_rules_${module} SOURCES)
  list(TRANSFORM sources PREPEND ${VANTREL_MUTATED}/${module}/)
  set_property(TARGET vantrel_rules_${module} PROPERTY SOURCES ${sources})
endforeach()
