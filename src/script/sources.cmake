# Sources of script/ are listed here as they are added.
