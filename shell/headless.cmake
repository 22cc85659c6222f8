# What the program does around its window: users, the order of start and close. Nothing here is drawn.
elevenfive_subsystem(
  shell
  SOURCES "${CMAKE_CURRENT_LIST_DIR}/startup.cpp" "${CMAKE_CURRENT_LIST_DIR}/userfiles.cpp"
          "${CMAKE_CURRENT_LIST_DIR}/users.cpp"
  LINK elevenfive::conditions elevenfive::acquire elevenfive::model)
