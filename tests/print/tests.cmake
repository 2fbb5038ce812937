# The documents again under a zone with daylight saving of its own.
cinefita_add_test_zone(test_documents_berlin test_documents Europe/Berlin)
