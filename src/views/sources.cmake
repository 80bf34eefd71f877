# Sources of views/ are listed here as they are added.
