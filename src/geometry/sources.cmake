# Sources of geometry/ are listed here as they are added.
