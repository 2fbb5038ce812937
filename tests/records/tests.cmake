# Date rules again under a zone with daylight saving of its own (the default run
# is America/Sao_Paulo).
cinefita_add_test_zone(test_dates_berlin test_dates Europe/Berlin)
cinefita_add_test_zone(test_rentalrules_berlin test_rentalrules Europe/Berlin)
cinefita_add_test_zone(test_adjustedreturn_berlin test_adjustedreturn Europe/Berlin)
