# Sources of objects/ are listed here as they are added.
