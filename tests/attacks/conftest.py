from television import tv  # noqa: F401  the fixture of every test here
